#include "host/sign_in/sign_in.h"

#include <algorithm>

#include "database/sqlite/text_fold.h"
#include "host/sign_in/passwords.h"
#include "host/site/log_text.h"
#include "variant/convert.h"

namespace tarlo::host {

namespace {

// A name longer than its column, or with control characters, belongs to nobody.
constexpr std::size_t kMostLogin = 150;

bool canBeLogin(std::string_view login) {
  return !login.empty() && login.size() <= kMostLogin &&
         std::ranges::none_of(login, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

// An IPv4 address as it looks on a socket that takes both families.
std::string_view plainAddress(std::string_view address) {
  constexpr std::string_view kMapped = "::ffff:";
  return address.starts_with(kMapped) ? address.substr(kMapped.size()) : address;
}

// One text for all writings of a name that the database takes for the same.
std::string nameKey(std::string_view login) {
  const std::string folded = database::encodeText(database::foldText(login.substr(0, kMostLogin)));
  return "name " + folded.substr(0, folded.find_last_not_of(' ') + 1);
}

std::string userKey(const std::optional<User>& user, std::string_view login) {
  return user ? "user " + std::to_string(user->id) : nameKey(login);
}

std::string addressKey(std::string_view way, std::string_view address) {
  return std::string(way) + " from " + std::string(plainAddress(address));
}

}  // namespace

SignIn::SignIn(const Config& config, database::Registry& databases,
               std::shared_ptr<spdlog::logger> log)
    : config_(config),
      databases_(databases),
      log_(std::move(log)),
      passwords_(config.signInAttempts, config.signInWindow),
      secrets_(config.signInAttempts, config.signInWindow) {}

SignIn::Result SignIn::byPassword(std::string_view login, std::string_view password,
                                  std::string_view address) {
  const std::optional<User> user = canBeLogin(login) ? findUser(database(), login) : std::nullopt;
  const std::string who = userKey(user, login), from = addressKey("password", address);
  if (!passwords_.take({who, from})) return throttled("password", login, address);
  const std::string hash = passwordHash(database(), user ? user->id : 0);
  const PasswordCheck check = checkPassword(hash, password.substr(0, kMostPassword + 1));
  if (check == PasswordCheck::Busy) {
    passwords_.giveBack({who, from});
    return {Outcome::Busy, {}};
  }
  if (check == PasswordCheck::Wrong || password.size() > kMostPassword)
    return failed("password", login, address);
  passwords_.giveBack({from});
  passwords_.forget(who);
  log_->info("{} signed in from {} by password", logText(login), address);
  return {Outcome::Done, *user};
}

SignIn::Result SignIn::byLink(std::string_view token, std::string_view address) {
  const std::optional<User> user = useSignInLink(database(), token);
  if (!user) {
    const bool mayTryAgain = secrets_.take({addressKey("link", address)});
    return mayTryAgain ? failed("link", "", address) : throttled("link", "", address);
  }
  log_->info("{} signed in from {} by link", logText(user->login), address);
  return {Outcome::Done, *user};
}

SignIn::Result SignIn::byToken(std::string_view token, std::string_view address) {
  const std::optional<User> user = userOfToken(database(), token);
  if (user) return {Outcome::Done, *user};
  const bool mayTryAgain = secrets_.take({addressKey("token", address)});
  return mayTryAgain ? failed("token", "", address) : throttled("token", "", address);
}

SignIn::Result SignIn::failed(std::string_view how, std::string_view login,
                              std::string_view address) {
  log_->warn("sign-in by {} failed: user {}, from {}", how, logText(login), address);
  return {Outcome::Refused, {}};
}

SignIn::Result SignIn::throttled(std::string_view how, std::string_view login,
                                 std::string_view address) {
  log_->warn("sign-in by {} refused: too many failures, user {}, from {}", how, logText(login),
             address);
  return {Outcome::Throttled, {}};
}

std::string_view SignIn::trustedLogin(const WireRequest& request) const {
  if (config_.trustedHeader.empty()) return {};
  const auto& named = config_.trustedAddresses;
  if (std::ranges::find(named, plainAddress(request.remoteAddress)) == named.end()) return {};
  return request.header(config_.trustedHeader);
}

std::optional<User> SignIn::trustedUser(std::string_view login) {
  const std::optional<User> user = canBeLogin(login) ? findUser(database(), login) : std::nullopt;
  if (!user) log_->warn("the trusted header names {}, who is no user", logText(login));
  return user;
}

void SignIn::fill(SessionData& session, const User& user) {
  session.put("usrID", std::to_string(user.id));
  session.put("usrICID", "0");
  session.put("usrStyle", "1");
  session.put("usrRank", user.rank);
  session.put("usrName", user.name);
  session.put(kSessionLogin, user.login);
  session.setStamp(user.stamp);
}

bool SignIn::isStillValid(SessionData& session) {
  if (!session.takeCheck(SessionData::Clock::now(), config_.sessionCheck)) return true;
  const std::string id = variant::spliced(session.get("usrID"));
  const std::optional<User> user = findUser(database(), variant::toInt32(id));
  if (user && user->stamp == session.stamp()) return true;
  log_->warn("the session of {} (user {}) ended: {}",
             logText(variant::spliced(session.get(kSessionLogin))), id,
             user ? "name, rank or password have changed" : "there is no such user any longer");
  return false;
}

}  // namespace tarlo::host
