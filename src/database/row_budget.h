#pragma once
// How many bytes of rows an operation and the process may hold. Rows are counted as they are read
// into memory, and given back together when the operation ends: what it has dropped meanwhile
// counts on, so that a page cannot read without end in small pieces.

#include <atomic>
#include <cstddef>

#include "variant/variant.h"

namespace tarlo::database {

// What a value takes in memory, roughly.
inline std::size_t sizeOf(const Variant& value) {
  return sizeof(Variant) + (value.isText() ? value.text().size() : 0);
}

// The process's share. Thread-safe.
class RowTotal {
 public:
  explicit RowTotal(std::size_t most) : most_(most) {}
  // False, and nothing taken, when it would be more than the most.
  bool take(std::size_t bytes);
  void giveBack(std::size_t bytes) { held_ -= bytes; }
  std::size_t held() const { return held_; }

 private:
  const std::size_t most_;
  std::atomic<std::size_t> held_{0};
};

class RowBudget {
 public:
  // The total outlives the budget.
  RowBudget(std::size_t most, RowTotal& total) : most_(most), total_(total) {}
  ~RowBudget() { total_.giveBack(held_); }
  RowBudget(const RowBudget&) = delete;
  RowBudget& operator=(const RowBudget&) = delete;

  // Raises DatabaseError: kTooManyRows beyond the operation's bytes, kNoRoomForRows beyond those of
  // the process.
  void take(std::size_t bytes);

  enum class Excess { None, Operation, Process };
  // What was met first: an operation that goes on after errors has no other way to know.
  Excess excess() const { return excess_; }

 private:
  const std::size_t most_;
  RowTotal& total_;
  std::size_t held_ = 0;
  Excess excess_ = Excess::None;
};

}  // namespace tarlo::database
