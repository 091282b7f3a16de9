#include "bridge/values.h"

#include <cstring>
#include <new>

#include "bridge/exported_object.h"
#include "bridge/foreign_object.h"
#include "variant/array.h"

namespace tarlo::bridge {
namespace {

using variant::State;

template <class T>
T* allocate(std::size_t count) {
  if (count == 0) return nullptr;
  void* memory = std::calloc(count, sizeof(T));
  if (memory == nullptr) throw std::bad_alloc();
  return static_cast<T*>(memory);
}

tarlo_text textToC(std::string_view text) {
  tarlo_text copy = {allocate<char>(text.size()), text.size()};
  if (!text.empty()) std::memcpy(copy.data, text.data(), text.size());
  return copy;
}

std::string_view textOf(const tarlo_text& text) {
  return text.data == nullptr ? std::string_view() : std::string_view(text.data, text.size);
}

tarlo_array* arrayToC(const Array& array) {
  auto* copy = allocate<tarlo_array>(1);
  copy->rank = array.rank();
  copy->upper_bounds = allocate<int64_t>(array.rank());
  for (std::size_t i = 0; i < array.rank(); ++i) copy->upper_bounds[i] = array.upperBound(i + 1);
  copy->count = array.elements().size();
  copy->elements = allocate<tarlo_variant>(copy->count);
  for (std::size_t i = 0; i < copy->count; ++i) copy->elements[i] = toC(array.elements()[i]);
  return copy;
}

Variant arrayFromC(const tarlo_array* array) {
  if (array == nullptr || array->rank == 0) return Variant(Array());
  const std::vector<std::ptrdiff_t> bounds(array->upper_bounds, array->upper_bounds + array->rank);
  Array copy{std::span<const std::ptrdiff_t>(bounds)};
  if (copy.elements().size() != array->count) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange, "an array of a component");
  }
  for (std::size_t i = 0; i < array->count; ++i) copy.elements()[i] = fromC(array->elements[i]);
  return Variant(std::move(copy));
}

}  // namespace

tarlo_variant toC(const Variant& value) {
  tarlo_variant copy = {static_cast<int32_t>(value.state()), 0, {}};
  switch (value.state()) {
    case State::Empty:
    case State::Null:
      break;
    case State::Text:
      copy.as.text = textToC(value.text());
      break;
    case State::Int16:
      copy.as.integer = *value.getIf<std::int16_t>();
      break;
    case State::Int32:
      copy.as.integer = *value.getIf<std::int32_t>();
      break;
    case State::Int64:
      copy.as.integer = *value.getIf<std::int64_t>();
      break;
    case State::Double:
      copy.as.number = *value.getIf<double>();
      break;
    case State::Decimal:
      copy.as.text = textToC(value.decimal().digits);
      break;
    case State::Boolean:
      copy.as.integer = value.boolean() ? 1 : 0;
      break;
    case State::Date:
      copy.as.number = value.date().days;
      break;
    case State::Array:
      copy.as.array = arrayToC(value.array());
      break;
    case State::Object:
      copy.as.object = exportObject(value.object());
      break;
  }
  return copy;
}

Variant fromC(const tarlo_variant& value) {
  switch (value.kind) {
    case TARLO_NULL:
      return variant::Null{};
    case TARLO_TEXT:
      return Variant(textOf(value.as.text));
    case TARLO_INT16:
      return Variant(static_cast<std::int16_t>(value.as.integer));
    case TARLO_INT32:
      return Variant(static_cast<std::int32_t>(value.as.integer));
    case TARLO_INT64:
      return Variant(value.as.integer);
    case TARLO_DOUBLE:
      return Variant(value.as.number);
    case TARLO_DECIMAL:
      return Variant(variant::Decimal{std::string(textOf(value.as.text))});
    case TARLO_BOOLEAN:
      return Variant(value.as.integer != 0);
    case TARLO_DATE:
      return Variant(variant::Date{value.as.number});
    case TARLO_ARRAY:
      return arrayFromC(value.as.array);
    case TARLO_OBJECT:
      return Variant(importObject(value.as.object));
    default:
      return {};
  }
}

void fill(tarlo_error& error, const RuntimeError& raised) {
  error.number = raised.number();
  error.description = textToC(raised.description());
  error.source = textToC(raised.source());
}

RuntimeError raisedBy(const tarlo_error& error) {
  return RuntimeError(error.number, std::string(textOf(error.description)),
                      std::string(textOf(error.source)));
}

Arguments::Arguments(std::span<const Variant> values) {
  values_.reserve(values.size());
  for (const Variant& value : values) values_.push_back(toC(value));
}

Arguments::~Arguments() {
  for (tarlo_variant& value : values_) tarlo_clear(&value);
}

void Arguments::writeBack(std::span<Variant> values) const {
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = fromC(values_[i]);
}

}  // namespace tarlo::bridge
