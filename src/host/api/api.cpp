#include "host/api/api.h"

#include "embedded_host_pages.h"
#include "host/api/resources.h"
#include "host/site/sign_in_pages.h"
#include "org/may_call.h"
#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::host {
namespace {

constexpr std::string_view kRoot = "/api/";

// Control schemes are read by forms: every user who may open any entry of the menu may read them.
constexpr frame::Access kReadsControls = {frame::Caller::FormUser};
// Schemes are the designers': users who may preview schemes.
constexpr frame::Access kReadsSchemes =
    frame::manages(frame::Manager::Schemes, frame::SubAction::Preview);

// "" when the request has none.
std::string_view tokenOf(const WireRequest& request) {
  constexpr std::string_view kScheme = "Bearer ";
  const std::string_view value = request.header("Authorization");
  if (value.size() <= kScheme.size()) return {};
  if (!text::equalsNoCase(value.substr(0, kScheme.size()), kScheme)) return {};
  return text::trim(value.substr(kScheme.size()));
}

void require(Page& page, const frame::Access& access) {
  if (org::mayCall(page, access)) return;
  throw ApiError(403, "forbidden", "The user has no permission for this.");
}

// Takes the user of a signed-in session, of a trusted proxy, or of the request's token. Throws
// ApiError 401.
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

void sendJson(Visit& visit, unsigned status, const Json& json) {
  visit.response.setStatus(status);
  visit.response.setHeader("Content-Type", "application/json; charset=utf-8");
  visit.response.setHeader("Cache-Control", "no-store");
  visit.response.binaryWrite(jsonText(json) + "\n");
}

// Throws ApiError 404 for anything but a number of at most nine digits.
std::int64_t idOf(std::string_view text) {
  constexpr std::size_t kMostDigits = 9;
  const bool isId = !text.empty() && text.size() <= kMostDigits &&
                    text.find_first_not_of("0123456789") == std::string_view::npos;
  if (!isId) throw notFound("An id is a number.");
  return std::stoll(std::string(text));
}

control::Control controlOf(Page& page, std::string_view id) {
  if (auto control = control::loadControl(page, idOf(id))) return std::move(*control);
  throw notFound("There is no such control scheme.");
}

void answerResource(Visit& visit, const std::vector<std::string_view>& parts) {
  const bool isControl = parts.size() >= 2 && parts[0] == "controls";
  if (isControl && parts.size() == 2) {
    require(visit.page, kReadsControls);
    sendJson(visit, 200, describe(visit.page, controlOf(visit.page, parts[1])));
  } else if (isControl && parts.size() == 3 && parts[2] == "rows") {
    require(visit.page, kReadsControls);
    answerRows(visit, controlOf(visit.page, parts[1]));
  } else if (parts.size() == 2 && parts[0] == "schemes") {
    require(visit.page, kReadsSchemes);
    sendJson(visit, 200, describeScheme(visit.page, idOf(parts[1])));
  } else {
    throw notFound("There is no such resource.");
  }
}

}  // namespace

bool isTokenCall(const Visit& visit) {
  return !tokenOf(visit.wire).empty() && visit.wire.header("Cookie").empty();
}

bool isApiPath(std::string_view path) {
  return path.starts_with(kRoot);
}

void answerApi(Visit& visit, SignIn& signIn) {
  visit.what = "api " + visit.path;
  const std::string_view path = std::string_view(visit.path).substr(kRoot.size());
  if (visit.wire.method == "POST") {
    throw ApiError(405, "method_not_allowed", "The interface is read only.");
  }
  if (path == "openapi.json") {
    visit.response.setHeader("Content-Type", "application/json; charset=utf-8");
    visit.response.binaryWrite(embedded::host_pages::find("api/openapi.json"));
    return;
  }
  requireUser(visit, signIn);
  answerResource(visit, text::split(path, "/"));
}

void writeApiError(Visit& visit, const ApiError& error) {
  if (error.status == 401) visit.response.setHeader("WWW-Authenticate", "Bearer");
  if (error.status == 405) visit.response.setHeader("Allow", "GET, HEAD");
  sendJson(
      visit, error.status,
      {{"error", {{"code", error.code}, {"message", error.message}, {"request", visit.wire.id}}}});
}

}  // namespace tarlo::host
