#include "host/api/api_access.h"

#include "host/api/api_error.h"
#include "host/site/sign_in_pages.h"
#include "org/may_call.h"
#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::host {
namespace {

// "" when the request has none.
std::string_view tokenOf(const WireRequest& request) {
  constexpr std::string_view kScheme = "Bearer ";
  const std::string_view value = request.header("Authorization");
  if (value.size() <= kScheme.size()) return {};
  if (!text::equalsNoCase(value.substr(0, kScheme.size()), kScheme)) return {};
  return text::trim(value.substr(kScheme.size()));
}

void require(bool isGranted) {
  if (!isGranted) throw ApiError(403, "forbidden", "The user has no permission for this.");
}

}  // namespace

bool isTokenCall(const Visit& visit) {
  return !tokenOf(visit.wire).empty() && visit.wire.header("Cookie").empty();
}

void requireUser(Visit& visit, SignIn& signIn) {
  const std::string_view token = tokenOf(visit.wire);
  if (token.empty()) {
    if (takeTrustedUser(visit, signIn)) return;
    throw ApiError(401, "unauthorized", "Sign in, or send a token as Authorization: Bearer.");
  }
  const SignIn::Result result = signIn.byToken(token, visit.wire.remoteAddress);
  if (result.outcome == SignIn::Outcome::Throttled) {
    throw ApiError(429, "too_many_failures", "Too many failures from this address.");
  }
  if (result.outcome != SignIn::Outcome::Done) {
    throw ApiError(401, "unauthorized", "The token is unknown or has expired.");
  }
  // A session for this request alone: a token opens no session that outlives it.
  const auto session = std::make_shared<SessionData>("", "");
  SignIn::fill(*session, result.user);
  visit.session.become(session);
}

void requireFormUser(Page& page) {
  require(org::mayCall(page, {frame::Caller::FormUser}));
}

void requireSchemePreview(Page& page) {
  require(org::mayCall(page, frame::manages(frame::Manager::Schemes, frame::SubAction::Preview)));
}

}  // namespace tarlo::host
