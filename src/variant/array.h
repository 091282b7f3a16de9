#pragma once
// Arrays of variants with any number of dimensions; every lower bound is 0. The first index runs
// fastest in memory, so a rows table (column, row) keeps the cells of a row together.

#include <cstddef>
#include <initializer_list>
#include <span>
#include <vector>

#include "variant/variant.h"

namespace tarlo::variant {

class Array {
 public:
  Array() = default;  // no dimension yet: every index and bound raises error 9
  // Upper bounds, one for each dimension; every element Empty. A bound of -1 gives a dimension
  // without elements; a smaller one raises error 9. More than kMaxElements elements raise error 7
  // (out of memory).
  explicit Array(std::initializer_list<std::ptrdiff_t> upperBounds);
  explicit Array(std::span<const std::ptrdiff_t> upperBounds);
  // One dimension, the elements given.
  static Array of(std::vector<Variant> elements);

  static constexpr std::size_t kMaxElements = std::size_t{1} << 28;

  std::size_t rank() const { return extents_.size(); }
  // Upper bound of dimension 1, 2, ...; error 9 when there is no such dimension.
  std::ptrdiff_t upperBound(std::size_t dimension = 1) const;

  // Element by index; error 9 when the rank differs or an index is out of its bounds.
  const Variant& at(std::ptrdiff_t i) const;
  const Variant& at(std::ptrdiff_t i, std::ptrdiff_t j) const;
  const Variant& at(std::span<const std::ptrdiff_t> indexes) const;
  Variant& at(std::ptrdiff_t i);
  Variant& at(std::ptrdiff_t i, std::ptrdiff_t j);
  Variant& at(std::span<const std::ptrdiff_t> indexes);

  // All elements, first index fastest.
  std::span<const Variant> elements() const { return elements_; }
  std::span<Variant> elements() { return elements_; }

 private:
  std::size_t offset(std::span<const std::ptrdiff_t> indexes) const;

  std::vector<std::size_t> extents_;
  std::vector<Variant> elements_;
};

}  // namespace tarlo::variant

namespace tarlo {
using variant::Array;
}
