#pragma once
// Users, passwords and one-time links as they are stored. Every function is one or two statements;
// all throw DatabaseError.

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "database/database.h"

namespace tarlo::host {

struct User {
  int id = 0;
  std::string login;
  std::string name;
  std::string rank;   // index of the user's rank, "" without one
  std::string stamp;  // another one when any of these or the password has changed
};

// By the name used at the sign-in, without regard to case as the database compares. Nothing for an
// unknown one, and for a row whose name is empty: so users are locked out whose row has to stay.
std::optional<User> findUser(database::Database& database, std::string_view login);
std::optional<User> findUser(database::Database& database, int id);

// "" when the user has no password.
std::string passwordHash(database::Database& database, int userId);
// Ends the user's tokens and open links as well: they may be why the password is changed.
void storePasswordHash(database::Database& database, int userId, std::string_view hash);

// A token that signs the user in once within `life`; only its hash is stored.
std::string makeSignInLink(database::Database& database, int userId,
                           std::chrono::milliseconds life);
// The user whose link it is, or nothing when it is unknown, used or too old. Of two callers with
// the same token one gets the user.
std::optional<User> useSignInLink(database::Database& database, std::string_view token);

// A token of the JSON interface for the user, good for `life`; only its hash is stored.
std::string makeApiToken(database::Database& database, int userId, std::chrono::milliseconds life);
// The user whose token it is, or nothing when it is unknown or too old.
std::optional<User> userOfToken(database::Database& database, std::string_view token);
// Ends every token of the user.
void revokeApiTokens(database::Database& database, int userId);

}  // namespace tarlo::host
