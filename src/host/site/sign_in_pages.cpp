#include "host/site/sign_in_pages.h"

#include "host/desktop/desktop.h"
#include "host/site/notice.h"
#include "text/fold.h"
#include "variant/convert.h"

namespace tarlo::host {

namespace {

void leadTo(Visit& visit, std::string_view address) {
  visit.response.setStatus(303);
  visit.response.setHeader("Location", address);
}

void showForm(Visit& visit, unsigned status, std::string_view message, std::string_view next) {
  visit.response.setStatus(status);
  writeSignInPage(visit.page, message, next);
}

void answer(Visit& visit, const SignIn::Result& result, std::string_view refusal,
            std::string_view next, const Config& config) {
  switch (result.outcome) {
    case SignIn::Outcome::Done:
      SignIn::fill(visit.beginSession(), result.user);
      leadTo(visit, next.empty() ? std::string_view(config.startPage) : next);
      break;
    case SignIn::Outcome::Refused:
      showForm(visit, 403, refusal, next);
      break;
    case SignIn::Outcome::Throttled:
      writeNotice(visit, kTooManyFailures);
      visit.response.setHeader(
          "Retry-After",
          std::to_string(std::chrono::ceil<std::chrono::seconds>(config.signInWindow).count()));
      break;
    case SignIn::Outcome::Busy:
      writeNotice(visit, kBusy);
      break;
  }
}

}  // namespace

std::string_view localAddress(std::string_view address) {
  // Two slashes, also with the backslash that browsers take for one, begin another host's address.
  const bool local = address.starts_with('/') && !address.starts_with("//") &&
                     address.find_first_of("\\\r\n\t") == std::string_view::npos;
  return local ? address : std::string_view{};
}

void signInPage(Visit& visit, SignIn& signIn, const Config& config) {
  const auto value = [&](std::string_view name) {
    return variant::spliced(visit.request.value(name));
  };
  const std::string next = value("next"), link = value("link");
  if (visit.wire.method == "POST") {
    answer(visit, signIn.byPassword(value("user"), value("password"), visit.wire.remoteAddress),
           "用户名或密码不正确。", localAddress(next), config);
  } else if (visit.wire.method == "GET" && !link.empty()) {
    answer(visit, signIn.byLink(link, visit.wire.remoteAddress), "登录链接无效、已使用或已过期。",
           localAddress(next), config);
  } else {
    showForm(visit, 200, "", localAddress(next));
  }
}

void signOutPage(Visit& visit) {
  visit.endSession();
  leadTo(visit, "/sign-in");
}

void askToSignIn(Visit& visit) {
  const bool isDesktop = visit.path == "/";
  // A posted page is not repeated by itself.
  const bool again = visit.wire.method == "GET";
  showForm(visit, isDesktop ? 200 : 403, "", again ? localAddress(visit.wire.target) : "");
}

bool takeTrustedUser(Visit& visit, SignIn& signIn) {
  if (visit.isSignedIn() && !signIn.isStillValid(*visit.session.data())) visit.endSession();
  const std::string_view login = signIn.trustedLogin(visit.wire);
  if (login.empty()) return visit.isSignedIn();
  if (visit.isSignedIn() &&
      text::equalsNoCase(variant::spliced(visit.session.get(kSessionLogin)), login))
    return true;
  const auto user = signIn.trustedUser(login);
  if (user) SignIn::fill(visit.beginSession(), *user);
  return user.has_value();
}

}  // namespace tarlo::host
