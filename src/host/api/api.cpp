#include "host/api/api.h"

#include "embedded_host_pages.h"
#include "host/api/api_access.h"
#include "host/api/control_resource.h"
#include "host/api/rows_answer.h"
#include "text/pieces.h"

namespace tarlo::host {
namespace {

constexpr std::string_view kRoot = "/api/";

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
    requireFormUser(visit.page);
    sendJson(visit, 200, describe(visit.page, controlOf(visit.page, parts[1])));
  } else if (isControl && parts.size() == 3 && parts[2] == "rows") {
    requireFormUser(visit.page);
    answerRows(visit, controlOf(visit.page, parts[1]));
  } else if (parts.size() == 2 && parts[0] == "schemes") {
    requireSchemePreview(visit.page);
    sendJson(visit, 200, describeScheme(visit.page, idOf(parts[1])));
  } else {
    throw notFound("There is no such resource.");
  }
}

}  // namespace

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
