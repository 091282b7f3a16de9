#pragma once
// Late-bound members as a table of a class: what the components that pages create share.

#include <span>
#include <string_view>

#include "frame/context_object.h"
#include "text/fold.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/object.h"
#include "variant/runtime_error.h"

namespace tarlo::frame {

// An optional member of a component: pages set flags as Booleans and as the texts "true" and
// "false".
inline bool toFlag(const Variant& value) {
  if (value.isEmpty() || value.isNull()) return false;
  if (!value.isText()) return variant::toBoolean(value);
  const std::string_view text = text::trim(value.text());
  return !text.empty() && variant::toBoolean(Variant(text));
}

template <class Component>
struct Property {
  std::string_view name;
  Variant (*get)(const Component&);
  void (*put)(Component&, const Variant&);
};

template <class Component>
struct Method {
  std::string_view name;
  std::size_t arguments;  // kAnyNumber: not checked
  Variant (Component::*run)(std::span<Variant>);
};
inline constexpr std::size_t kAnyNumber = SIZE_MAX;

// The row of that name, without regard to case. Error 438 when there is none.
template <class Row>
const Row& findMember(std::span<const Row> rows, std::string_view name) {
  for (const Row& row : rows) {
    if (text::equalsNoCase(row.name, name)) return row;
  }
  throw RuntimeError(ErrorNumber::NoSuchMember, name);
}

// Error 450 for a wrong number of arguments.
template <class Component>
Variant callMember(Component& component, std::span<const Method<Component>> rows,
                   std::string_view name, std::span<Variant> arguments) {
  const auto& row = findMember(rows, name);
  if (row.arguments != kAnyNumber && row.arguments != arguments.size()) {
    throw RuntimeError(ErrorNumber::WrongArgumentCount, name);
  }
  return (component.*row.run)(arguments);
}

// An object whose class names its members in `Members::properties()` and `Members::methods()`.
template <class Component>
class MemberObject : public Object {
 public:
  // A method without arguments reads like a property in the pages' language.
  Variant get(std::string_view name, std::span<Variant> arguments = {}) override {
    for (const auto& property : Component::Members::properties()) {
      if (text::equalsNoCase(property.name, name)) return property.get(self());
    }
    return call(name, arguments);
  }
  void put(std::string_view name, const Variant& value) override {
    findMember(Component::Members::properties(), name).put(self(), value);
  }
  Variant call(std::string_view name, std::span<Variant> arguments) override {
    return callMember(self(), Component::Members::methods(), name, arguments);
  }

 private:
  Component& self() { return static_cast<Component&>(*this); }
};

// The page that the objects of a page context belong to, whatever their number and order; nothing
// when none is one.
inline Page* pageOf(std::span<const Variant> arguments) {
  for (const Variant& argument : arguments) {
    if (!argument.isObject()) continue;
    if (const auto* context = dynamic_cast<ContextObject*>(argument.object().get())) {
      return &context->page();
    }
  }
  return nullptr;
}

// The same, for ASPConnect: error 91 when none is one.
inline Page* connectedPage(std::span<const Variant> arguments) {
  Page* page = pageOf(arguments);
  if (page == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet, "ASPConnect");
  return page;
}

}  // namespace tarlo::frame
