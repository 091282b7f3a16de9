#include "component/tarlo_query.h"

#include <optional>

#include "component/operations.h"
#include "text/fold.h"
#include "variant/runtime_error.h"

namespace tarlo::component {
namespace {

// Same order as kLifecycle.
enum class Member { OnStartPage, OnEndPage, ASPConnect, ASPDisconnect };
constexpr std::array<std::size_t, kLifecycle.size()> kLifecycleArity = {1, 0, 5, 0};

std::optional<Member> lifecycleMember(std::string_view name) {
  for (std::size_t i = 0; i < kLifecycle.size(); ++i) {
    if (text::equalsNoCase(kLifecycle[i], name)) return static_cast<Member>(i);
  }
  return std::nullopt;
}

void checkCount(std::string_view name, std::size_t expected, std::size_t given) {
  if (expected != given) throw RuntimeError(ErrorNumber::WrongArgumentCount, name);
}

Page& contextOf(const Variant& argument) {
  const auto* context = dynamic_cast<const ContextObject*>(argument.object().get());
  if (!context) throw RuntimeError(ErrorNumber::TypeMismatch, "no page context");
  return context->page();
}

}  // namespace

void TarloQuery::onStartPage(Page& page) {
  // The value is of no use here, since data procedures read it afresh. A host whose application
  // values cannot be read is told so now, before an operation has written half a page.
  static_cast<void>(page.application.get("strConn"));
  page_ = &page;
}

void TarloQuery::onEndPage() {
  page_ = nullptr;
}

Variant TarloQuery::call(std::string_view name, std::span<Variant> arguments) {
  if (const Operation* operation = findOperation(name)) {
    checkCount(operation->name, operation->arity, arguments.size());
    if (!page_) throw RuntimeError(ErrorNumber::ObjectNotSet, operation->name);
    return run(*page_, *operation, arguments);
  }
  const std::optional<Member> member = lifecycleMember(name);
  if (!member) throw RuntimeError(ErrorNumber::NoSuchMember, name);
  checkCount(name, kLifecycleArity[static_cast<std::size_t>(*member)], arguments.size());
  switch (*member) {
    case Member::OnStartPage:
      onStartPage(contextOf(arguments[0]));
      break;
    case Member::OnEndPage:
      onEndPage();
      break;
    case Member::ASPConnect:  // succeeds, and binds nothing
    case Member::ASPDisconnect:
      break;
  }
  return {};
}

}  // namespace tarlo::component
