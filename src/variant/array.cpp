#include "variant/array.h"

#include <array>

#include "variant/runtime_error.h"

namespace tarlo::variant {

Array::Array(std::initializer_list<std::ptrdiff_t> upperBounds)
    : Array(std::span<const std::ptrdiff_t>(upperBounds.begin(), upperBounds.size())) {}

Array::Array(std::span<const std::ptrdiff_t> upperBounds) {
  std::size_t count = upperBounds.empty() ? 0 : 1;
  extents_.reserve(upperBounds.size());
  for (const std::ptrdiff_t bound : upperBounds) {
    if (bound < -1) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    const std::size_t extent = static_cast<std::size_t>(bound) + 1;
    if (extent != 0 && count > kMaxElements / extent) throw RuntimeError(ErrorNumber::OutOfMemory);
    extents_.push_back(extent);
    count *= extent;
  }
  elements_.resize(count);
}

Array Array::of(std::vector<Variant> elements) {
  Array array;
  array.extents_ = {elements.size()};
  array.elements_ = std::move(elements);
  return array;
}

std::ptrdiff_t Array::upperBound(std::size_t dimension) const {
  if (dimension < 1 || dimension > rank()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return static_cast<std::ptrdiff_t>(extents_[dimension - 1]) - 1;
}

std::size_t Array::offset(std::span<const std::ptrdiff_t> indexes) const {
  if (indexes.empty() || indexes.size() != rank())
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  std::size_t position = 0;
  for (std::size_t d = rank(); d-- > 0;) {
    if (indexes[d] < 0 || static_cast<std::size_t>(indexes[d]) >= extents_[d])
      throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    position = position * extents_[d] + static_cast<std::size_t>(indexes[d]);
  }
  return position;
}

const Variant& Array::at(std::span<const std::ptrdiff_t> indexes) const {
  return elements_[offset(indexes)];
}

const Variant& Array::at(std::ptrdiff_t i) const {
  return at(std::array{i});
}

const Variant& Array::at(std::ptrdiff_t i, std::ptrdiff_t j) const {
  return at(std::array{i, j});
}

Variant& Array::at(std::span<const std::ptrdiff_t> indexes) {
  return elements_[offset(indexes)];
}

Variant& Array::at(std::ptrdiff_t i) {
  return at(std::array{i});
}

Variant& Array::at(std::ptrdiff_t i, std::ptrdiff_t j) {
  return at(std::array{i, j});
}

}  // namespace tarlo::variant
