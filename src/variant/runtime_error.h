#pragma once
// The one error that operations throw. The numbers are those that the pages' language has for its
// run-time errors, since pages and sibling components test them.

#include <exception>
#include <string>
#include <string_view>

namespace tarlo::variant {

enum class ErrorNumber : int {
  InvalidCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  PermissionDenied = 70,
  ObjectNotSet = 91,
  InvalidUseOfNull = 94,
  CannotCreateObject = 429,
  NoSuchMember = 438,
  WrongArgumentCount = 450,
};

class RuntimeError : public std::exception {
 public:
  // The description of the number is the classic one, followed by ": " and the detail when one is
  // given.
  explicit RuntimeError(ErrorNumber number, std::string_view detail = {});
  // Any number with a description of its own; `source` names who raised it.
  RuntimeError(int number, std::string description, std::string source = {});

  int number() const { return number_; }
  const std::string& description() const { return description_; }
  const std::string& source() const { return source_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  int number_;
  std::string description_;
  std::string source_;
};

}  // namespace tarlo::variant

namespace tarlo {
using variant::ErrorNumber;
using variant::RuntimeError;
}  // namespace tarlo
