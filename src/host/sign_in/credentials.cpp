#include "host/sign_in/credentials.h"

#include <fmt/format.h>

#include "frame/helpers.h"
#include "host/context/sessions.h"
#include "host/sign_in/passwords.h"
#include "text/date_text.h"
#include "text/sql_text.h"
#include "variant/convert.h"

namespace tarlo::host {

namespace {

using text::sqlText;

std::string utcText(std::chrono::system_clock::time_point time) {
  return text::dateTimeText(text::calendarAt(std::chrono::floor<std::chrono::milliseconds>(time)));
}

std::optional<User> userWhere(database::Database& database, const std::string& condition) {
  database::Lease connection = database.borrow();
  const auto rows = connection->open(
      "select u.User_ID,u.User_user,u.User_Name,r.Rank_Index,c.Hash from Zembra_User u "
      "left join Zembra_Rank r on r.Rank_ID=u.User_RankID "
      "left join Tarlo_Credential c on c.User_ID=u.User_ID where " +
      condition);
  if (rows->atEnd()) return std::nullopt;
  User user{variant::toInt32(rows->value(0)), variant::spliced(rows->value(1)),
            variant::spliced(rows->value(2)), variant::spliced(rows->value(3)), ""};
  if (user.login.empty()) return std::nullopt;
  // No control character is in a name or a hash, so no two users' texts run into the same.
  user.stamp = tokenHash(fmt::format("{}\n{}\n{}\n{}", user.login, user.name, user.rank,
                                     variant::spliced(rows->value(4))));
  return user;
}

// A fresh one of the user, of which the database keeps the hash.
std::string makeSecret(database::Database& database, std::string_view table, int userId,
                       std::chrono::milliseconds life) {
  const std::string token = randomToken();
  database::Lease connection = database.borrow();
  connection->execute(fmt::format("insert into {} (TokenHash,User_ID,ExpiresAt) values ({},{},{})",
                                  table, sqlText(tokenHash(token)), userId,
                                  sqlText(utcText(std::chrono::system_clock::now() + life))));
  return token;
}

// Those of the user that are still good work no longer.
void endSecrets(database::Connection& connection, std::string_view table, int userId) {
  connection.execute(fmt::format("update {0} set ExpiresAt={1} where User_ID={2} and ExpiresAt>{1}",
                                 table, sqlText(utcText(std::chrono::system_clock::now())),
                                 userId));
}

}  // namespace

std::optional<User> findUser(database::Database& database, std::string_view login) {
  return userWhere(database, "u.User_user=" + sqlText(login));
}

std::optional<User> findUser(database::Database& database, int id) {
  return userWhere(database, fmt::format("u.User_ID={}", id));
}

std::string passwordHash(database::Database& database, int userId) {
  database::Lease connection = database.borrow();
  const auto rows =
      connection->open(fmt::format("select Hash from Tarlo_Credential where User_ID={}", userId));
  return rows->atEnd() ? std::string() : variant::spliced(rows->value(0));
}

void storePasswordHash(database::Database& database, int userId, std::string_view hash) {
  const bool known = !passwordHash(database, userId).empty();
  const std::string now = sqlText(frame::currentDateTimeText());
  database::Lease connection = database.borrow();
  connection->execute(
      known ? fmt::format("update Tarlo_Credential set Hash={},ChangedAt={} where User_ID={}",
                          sqlText(hash), now, userId)
            : fmt::format("insert into Tarlo_Credential (User_ID,Hash,ChangedAt) "
                          "values ({},{},{})",
                          userId, sqlText(hash), now));
  endSecrets(*connection, "Tarlo_ApiToken", userId);
  endSecrets(*connection, "Tarlo_SignInLink", userId);
}

std::string makeSignInLink(database::Database& database, int userId,
                           std::chrono::milliseconds life) {
  return makeSecret(database, "Tarlo_SignInLink", userId, life);
}

std::optional<User> useSignInLink(database::Database& database, std::string_view token) {
  const std::string hash = sqlText(tokenHash(token));
  const std::string mark = sqlText(randomToken());
  int userId = 0;
  {
    database::Lease connection = database.borrow();
    const std::string isGood = fmt::format("TokenHash={} and UsedBy is null and ExpiresAt>{}", hash,
                                           sqlText(utcText(std::chrono::system_clock::now())));
    // Guessing must not cost the database a write.
    if (connection->open("select User_ID from Tarlo_SignInLink where " + isGood)->atEnd()) {
      return std::nullopt;
    }
    connection->execute(
        fmt::format("update Tarlo_SignInLink set UsedBy={} where {}", mark, isGood));
    // The mark of this very use tells whether it was this call that took the link.
    const auto rows = connection->open(fmt::format(
        "select User_ID from Tarlo_SignInLink where TokenHash={} and UsedBy={}", hash, mark));
    if (rows->atEnd()) return std::nullopt;
    userId = variant::toInt32(rows->value(0));
  }
  return findUser(database, userId);
}

std::string makeApiToken(database::Database& database, int userId, std::chrono::milliseconds life) {
  return makeSecret(database, "Tarlo_ApiToken", userId, life);
}

std::optional<User> userOfToken(database::Database& database, std::string_view token) {
  int userId = 0;
  {
    database::Lease connection = database.borrow();
    const auto rows = connection->open(
        fmt::format("select User_ID from Tarlo_ApiToken where TokenHash={} and ExpiresAt>{}",
                    sqlText(tokenHash(token)), sqlText(utcText(std::chrono::system_clock::now()))));
    if (rows->atEnd()) return std::nullopt;
    userId = variant::toInt32(rows->value(0));
  }
  return findUser(database, userId);
}

void revokeApiTokens(database::Database& database, int userId) {
  endSecrets(*database.borrow(), "Tarlo_ApiToken", userId);
}

}  // namespace tarlo::host
