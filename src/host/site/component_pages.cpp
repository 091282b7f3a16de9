#include "host/site/component_pages.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <optional>

#include "component/operations.h"
#include "component/tarlo_query.h"
#include "frame/helpers.h"
#include "host/site/log_text.h"
#include "host/site/notice.h"
#include "host/site/same_origin.h"
#include "org/may_call.h"
#include "siblings/siblings.h"
#include "text/fold.h"
#include "variant/convert.h"

namespace tarlo::host {

namespace {

constexpr std::string_view kEnding = ".Zembra";
constexpr database::StatementRights kNoRights = {};

// What an address names: a row of the table of operations, or of the components beside.
struct Target {
  frame::Access access;
  database::StatementRights rights;
  bool isPage;
  std::function<void(Page&)> run;
};

std::optional<Target> ownTarget(std::string_view action) {
  const component::Operation* operation = component::findOperation(action);
  if (operation == nullptr) return {};
  return Target{operation->access, operation->rights,
                operation->kind == component::OperationKind::Page,
                [operation](Page& page) { operation->invoke(page, {}); }};
}

std::optional<Target> siblingTarget(std::string_view component, std::string_view action) {
  for (const siblings::PageOperation& operation : siblings::pageOperations()) {
    if (!text::equalsNoCase(operation.component, component)) continue;
    if (!text::equalsNoCase(operation.name, action)) continue;
    return Target{operation.access, operation.rights, true, operation.run};
  }
  return {};
}

// What changes data shows where it comes from; all else goes on unless another site caused it.
bool comesFromHere(Visit& visit, const database::StatementRights& rights, spdlog::logger& log) {
  return mayGoOn(visit, component::changesData(rights) ? Purpose::Changes : Purpose::Reads, log);
}

// The check writes its refusal itself.
bool mayConnect(Visit& visit, spdlog::logger& log) {
  if (frame::hasValidOrigin(visit.page)) return true;
  log.warn("{} {} refused: referring address {}", visit.wire.id, logText(visit.what),
           logText(visit.wire.header("Referer")));
  visit.response.setStatus(403);
  return false;
}

}  // namespace

std::string_view componentOf(std::string_view path) {
  if (path.size() <= kEnding.size() + 1 || path.front() != '/') return {};
  const std::string_view ending = path.substr(path.size() - kEnding.size());
  if (!text::equalsNoCase(ending, kEnding)) return {};
  const std::string_view name = path.substr(1, path.size() - kEnding.size() - 1);
  return name.find('/') == std::string_view::npos ? name : std::string_view{};
}

bool hasComponent(std::string_view component) {
  return text::equalsNoCase(component, component::kClassName) ||
         std::ranges::any_of(siblings::pageOperations(), [&](const auto& operation) {
           return text::equalsNoCase(operation.component, component);
         });
}

void runComponentPage(Visit& visit, std::string_view component, spdlog::logger& log) {
  const std::string action = variant::spliced(visit.request.value("action"));
  visit.what = fmt::format("{} {}", component, action);
  const bool isOwn = text::equalsNoCase(component, component::kClassName);
  const auto target = isOwn ? ownTarget(action) : siblingTarget(component, action);
  if (!comesFromHere(visit, target ? target->rights : kNoRights, log)) return;
  if (!mayConnect(visit, log)) return;
  if (!target) {
    refuse(visit, log, kNoSuchOperation, "no such operation");
  } else if (!target->isPage) {
    refuse(visit, log, kNotAPage, "a service operation, asked for by address");
  } else if (!org::mayCall(visit.page, target->access)) {
    refuse(visit, log, kNotGranted, "the user may not call it");
  } else {
    component::runAs(visit.page, target->access, target->rights, [&] { target->run(visit.page); });
  }
}

}  // namespace tarlo::host
