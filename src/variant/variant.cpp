#include "variant/variant.h"

#include "variant/array.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

template <class T, class Stored>
const T& stored(const Stored& value) {
  if (const T* found = std::get_if<T>(&value)) return *found;
  throw RuntimeError(ErrorNumber::TypeMismatch);
}

}  // namespace

Variant::Variant(Array array) : value_(std::make_shared<Array>(std::move(array))) {}

bool Variant::isNumber() const {
  switch (state()) {
    case State::Int16:
    case State::Int32:
    case State::Int64:
    case State::Double:
    case State::Decimal:
      return true;
    default:
      return false;
  }
}

const std::string& Variant::text() const {
  return stored<std::string>(value_);
}

bool Variant::boolean() const {
  return stored<bool>(value_);
}

Date Variant::date() const {
  return stored<Date>(value_);
}

const Decimal& Variant::decimal() const {
  return stored<Decimal>(value_);
}

const Array& Variant::array() const {
  return *stored<std::shared_ptr<Array>>(value_);
}

Array& Variant::mutableArray() {
  auto* shared = std::get_if<std::shared_ptr<Array>>(&value_);
  if (!shared) throw RuntimeError(ErrorNumber::TypeMismatch);
  if (shared->use_count() > 1) *shared = std::make_shared<Array>(**shared);
  return **shared;
}

const std::shared_ptr<Object>& Variant::object() const {
  return stored<std::shared_ptr<Object>>(value_);
}

}  // namespace tarlo::variant
