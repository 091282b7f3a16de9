#pragma once
// Who may come in: by password, by a one-time link, or by the word of a trusted proxy.

#include <spdlog/logger.h>

#include <memory>
#include <optional>
#include <string_view>

#include "host/config.h"
#include "host/context/sessions.h"
#include "host/sign_in/credentials.h"
#include "host/sign_in/throttle.h"
#include "host/wire/message.h"

namespace tarlo::host {

class SignIn {
 public:
  // All outlive it. The database of the configuration is opened at the first use.
  SignIn(const Config& config, database::Registry& databases, std::shared_ptr<spdlog::logger> log);

  // Refused says the same for an unknown user and a wrong password. Throttled: too many failures of
  // the user, or from the address; nothing was looked at then, and no password was hashed.
  enum class Outcome { Done, Refused, Throttled, Busy };
  struct Result {
    Outcome outcome = Outcome::Refused;
    User user;  // of Done
  };
  // Failures count for the user whom the name means however it is written, else for the name.
  Result byPassword(std::string_view login, std::string_view password, std::string_view address);
  // A token of the JSON interface, which works until it expires, and a link, which works once. One
  // that is good passes whatever else came from the address.
  Result byToken(std::string_view token, std::string_view address);
  Result byLink(std::string_view token, std::string_view address);
  // The user that the request's trusted header names: "" unless the mode is on and the request
  // comes from a named address.
  std::string_view trustedLogin(const WireRequest& request) const;
  std::optional<User> trustedUser(std::string_view login);

  // The session's values that pages expect of a signed-in user.
  static void fill(SessionData& session, const User& user);
  // Whether the session's user is still there, with the name, rank and password of the sign-in.
  // Asks the database when the session's last answer is older than the configuration allows.
  bool isStillValid(SessionData& session);

 private:
  database::Database& database() { return databases_.find(config_.database); }
  Result failed(std::string_view how, std::string_view login, std::string_view address);
  Result throttled(std::string_view how, std::string_view login, std::string_view address);

  const Config& config_;
  database::Registry& databases_;
  std::shared_ptr<spdlog::logger> log_;
  Throttle passwords_;
  Throttle secrets_;  // links and tokens: guessing costs little, and must not crowd out the others
};

// The session value that keeps the name used at the sign-in.
inline constexpr std::string_view kSessionLogin = "usrLogin";

}  // namespace tarlo::host
