#include "variant/object.h"

#include "variant/runtime_error.h"

namespace tarlo::variant {

Variant Object::get(std::string_view name, std::span<Variant>) {
  throw RuntimeError(ErrorNumber::NoSuchMember, name);
}

void Object::put(std::string_view name, const Variant&) {
  throw RuntimeError(ErrorNumber::NoSuchMember, name);
}

Variant Object::call(std::string_view name, std::span<Variant>) {
  throw RuntimeError(ErrorNumber::NoSuchMember, name);
}

}  // namespace tarlo::variant
