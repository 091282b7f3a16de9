#include "host/sign_in/sign_in.h"

#include <algorithm>

#include "host/sign_in/passwords.h"
#include "host/site/log_text.h"
#include "variant/text.h"

namespace tarlo::host {

namespace {

// A name longer than its column, or with control characters, belongs to nobody.
constexpr std::size_t kMostLogin = 150;

bool canBeLogin(std::string_view login) {
  return !login.empty() && login.size() <= kMostLogin &&
         std::ranges::none_of(login, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

std::string userKey(std::string_view login) {
  return "user " + variant::foldedName(login.substr(0, kMostLogin));
}

std::string addressKey(std::string_view address) {
  return "address " + std::string(address);
}

// An IPv4 address as it looks on a socket that takes both families.
std::string_view plainAddress(std::string_view address) {
  constexpr std::string_view kMapped = "::ffff:";
  return address.starts_with(kMapped) ? address.substr(kMapped.size()) : address;
}

}  // namespace

SignIn::SignIn(const Config& config, database::Registry& databases,
               std::shared_ptr<spdlog::logger> log)
    : config_(config),
      databases_(databases),
      log_(std::move(log)),
      throttle_(config.signInAttempts, config.signInWindow) {}

SignIn::Result SignIn::byPassword(std::string_view login, std::string_view password,
                                  std::string_view address) {
  if (throttle_.isBlocked(userKey(login)) || throttle_.isBlocked(addressKey(address))) {
    log_->warn("sign-in of {} from {} refused: too many failures", logText(login), address);
    return {Outcome::Throttled, {}};
  }
  const std::optional<User> user = canBeLogin(login) ? findUser(database(), login) : std::nullopt;
  const std::string hash = user ? passwordHash(database(), user->id) : std::string();
  const PasswordCheck check = checkPassword(hash, password.substr(0, kMostPassword + 1));
  if (check == PasswordCheck::Busy) return {Outcome::Busy, {}};
  if (check == PasswordCheck::Wrong || password.size() > kMostPassword)
    return failed("password", login, address);
  throttle_.forget(userKey(login));
  log_->info("{} signed in from {} by password", logText(login), address);
  return {Outcome::Done, *user};
}

SignIn::Result SignIn::byLink(std::string_view token, std::string_view address) {
  if (throttle_.isBlocked(addressKey(address))) return {Outcome::Throttled, {}};
  const std::optional<User> user = useSignInLink(database(), token);
  if (!user) return failed("link", "", address);
  log_->info("{} signed in from {} by link", logText(user->login), address);
  return {Outcome::Done, *user};
}

SignIn::Result SignIn::byToken(std::string_view token, std::string_view address) {
  if (throttle_.isBlocked(addressKey(address))) return {Outcome::Throttled, {}};
  const std::optional<User> user = userOfToken(database(), token);
  if (!user) return failed("token", "", address);
  return {Outcome::Done, *user};
}

SignIn::Result SignIn::failed(std::string_view how, std::string_view login,
                              std::string_view address) {
  if (!login.empty()) throttle_.noteFailure(userKey(login));
  throttle_.noteFailure(addressKey(address));
  log_->warn("sign-in by {} failed: user {}, from {}", how, logText(login), address);
  return {Outcome::Refused, {}};
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
}

}  // namespace tarlo::host
