#include "host/site/component_pages.h"

#include <fmt/format.h>

#include <algorithm>

#include "component/operations.h"
#include "component/tarlo_query.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "host/site/log_text.h"
#include "host/site/notice.h"
#include "host/site/same_origin.h"
#include "org/may_call.h"
#include "siblings/siblings.h"
#include "text/fold.h"
#include "variant/convert.h"

namespace tarlo::host {

namespace {

using component::TarloQuery;

constexpr std::string_view kEnding = ".Zembra";
constexpr database::StatementRights kNoRights = {};

// The component bound to a page: let go whichever way the operation ends.
class BoundComponent {
 public:
  explicit BoundComponent(Page& page) { component_.onStartPage(page); }
  ~BoundComponent() { component_.onEndPage(); }
  BoundComponent(const BoundComponent&) = delete;
  BoundComponent& operator=(const BoundComponent&) = delete;
  Variant call(std::string_view name) { return component_.call(name, {}); }

 private:
  TarloQuery component_;
};

// What changes data shows where it comes from; all else goes on unless another site caused it.
bool comesFromHere(Visit& visit, const database::StatementRights& rights, spdlog::logger& log) {
  return mayGoOn(visit, component::changesData(rights) ? Purpose::Changes : Purpose::Reads, log);
}

// The check writes its refusal itself.
bool mayConnect(Visit& visit, BoundComponent& bound, spdlog::logger& log) {
  if (variant::toBoolean(bound.call("isValidConnect"))) return true;
  log.warn("{} {} refused: referring address {}", visit.wire.id, logText(visit.what),
           logText(visit.wire.header("Referer")));
  visit.response.setStatus(403);
  return false;
}

// A user whom the row does not name has been told so when this is false.
bool mayCall(Visit& visit, const frame::Access& access, spdlog::logger& log) {
  if (org::mayCall(visit.page, access)) return true;
  refuse(visit, log, kNotGranted, "the user may not call it");
  return false;
}

void runOwnOperation(Visit& visit, const std::string& action, spdlog::logger& log) {
  const component::Operation* operation = component::findOperation(action);
  if (!comesFromHere(visit, operation == nullptr ? kNoRights : operation->rights, log)) return;
  BoundComponent bound(visit.page);
  if (!mayConnect(visit, bound, log)) return;
  if (operation == nullptr) {
    refuse(visit, log, kNoSuchOperation, "no such operation");
  } else if (operation->kind == component::OperationKind::Service || operation->arity > 0) {
    refuse(visit, log, kNotAPage, "a service operation, asked for by address");
  } else if (mayCall(visit, operation->access, log)) {
    bound.call(operation->name);
  }
}

const siblings::PageOperation* findSibling(std::string_view component, std::string_view action) {
  const auto& all = siblings::pageOperations();
  const auto found = std::ranges::find_if(all, [&](const auto& operation) {
    return text::equalsNoCase(operation.component, component) &&
           text::equalsNoCase(operation.name, action);
  });
  return found == all.end() ? nullptr : &*found;
}

void runSiblingOperation(Visit& visit, std::string_view component, const std::string& action,
                         spdlog::logger& log) {
  const siblings::PageOperation* operation = findSibling(component, action);
  if (!comesFromHere(visit, operation == nullptr ? kNoRights : operation->rights, log)) return;
  {
    BoundComponent bound(visit.page);
    if (!mayConnect(visit, bound, log)) return;
  }
  if (operation == nullptr) {
    refuse(visit, log, kNoSuchOperation, "no such operation");
  } else if (mayCall(visit, operation->access, log)) {
    const frame::StatementScope scope(visit.page, operation->rights);
    const frame::AccessScope access(visit.page, operation->access);
    operation->run(visit.page);
  }
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
  if (text::equalsNoCase(component, component::kClassName)) {
    runOwnOperation(visit, action, log);
  } else {
    runSiblingOperation(visit, component, action, log);
  }
}

}  // namespace tarlo::host
