#pragma once
// Late-bound members as a table of a class: what the components that pages create share.

#include <span>
#include <string_view>

#include "frame/context_object.h"
#include "variant/convert.h"
#include "variant/object.h"
#include "variant/runtime_error.h"
#include "variant/text.h"

namespace tarlo::siblings {

// An optional member of a component: pages set flags as Booleans and as the texts "true" and
// "false".
inline bool toFlag(const Variant& value) {
  if (value.isEmpty() || value.isNull()) return false;
  if (!value.isText()) return variant::toBoolean(value);
  const std::string_view text = variant::trim(value.text());
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
    if (variant::equalsNoCase(row.name, name)) return row;
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

// The page that the objects of a page context belong to, whatever their number and order; nothing
// when none is one.
inline Page* pageOf(std::span<const Variant> arguments) {
  for (const Variant& argument : arguments) {
    if (!argument.isObject()) continue;
    if (const auto* context = dynamic_cast<frame::ContextObject*>(argument.object().get())) {
      return &context->page();
    }
  }
  return nullptr;
}

}  // namespace tarlo::siblings
