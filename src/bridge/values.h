#pragma once
// Values on their way through the binary interface of components.

#include <tarloquery/component.h>

#include <span>
#include <vector>

#include "variant/runtime_error.h"
#include "variant/variant.h"

namespace tarlo::bridge {

// A copy that the caller clears. std::bad_alloc when there is no memory.
tarlo_variant toC(const Variant& value);
// A copy. A kind that does not exist is Empty.
Variant fromC(const tarlo_variant& value);

void fill(tarlo_error& error, const RuntimeError& raised);
RuntimeError raisedBy(const tarlo_error& error);

// Values of one call: made from variants, cleared with it.
class Arguments {
 public:
  explicit Arguments(std::span<const Variant> values);
  ~Arguments();
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;
  tarlo_variant* data() { return values_.data(); }
  std::size_t size() const { return values_.size(); }
  // What the call left in them.
  void writeBack(std::span<Variant> values) const;

 private:
  std::vector<tarlo_variant> values_;
};

}  // namespace tarlo::bridge
