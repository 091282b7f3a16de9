#pragma once
// A node owned by its parent: always present unless moved from, copied deeply, compared by value.

#include <memory>
#include <utility>

namespace tarlo::tsql::ast {

template <class T>
class Box {
 public:
  Box(T value) : value_(std::make_unique<T>(std::move(value))) {}
  Box(const Box& other) : value_(std::make_unique<T>(*other)) {}
  Box(Box&&) noexcept = default;
  Box& operator=(const Box& other) { return *this = Box(other); }
  Box& operator=(Box&&) noexcept = default;

  T& operator*() { return *value_; }
  const T& operator*() const { return *value_; }
  T* operator->() { return value_.get(); }
  const T* operator->() const { return value_.get(); }
  friend bool operator==(const Box& a, const Box& b) { return *a == *b; }

 private:
  std::unique_ptr<T> value_;
};

}  // namespace tarlo::tsql::ast
