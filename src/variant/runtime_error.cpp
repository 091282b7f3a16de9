#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

std::string_view classicDescription(ErrorNumber number) {
  switch (number) {
    case ErrorNumber::InvalidCall:
      return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
      return "Overflow";
    case ErrorNumber::OutOfMemory:
      return "Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
      return "Subscript out of range";
    case ErrorNumber::DivisionByZero:
      return "Division by zero";
    case ErrorNumber::TypeMismatch:
      return "Type mismatch";
    case ErrorNumber::PermissionDenied:
      return "Permission denied";
    case ErrorNumber::ObjectNotSet:
      return "Object variable not set";
    case ErrorNumber::InvalidUseOfNull:
      return "Invalid use of Null";
    case ErrorNumber::CannotCreateObject:
      return "Component can't create object";
    case ErrorNumber::NoSuchMember:
      return "Object doesn't support this property or method";
    case ErrorNumber::WrongArgumentCount:
      return "Wrong number of arguments";
  }
  return "Application-defined error";
}

std::string describe(ErrorNumber number, std::string_view detail) {
  std::string description(classicDescription(number));
  if (!detail.empty()) description.append(": ").append(detail);
  return description;
}

}  // namespace

RuntimeError::RuntimeError(ErrorNumber number, std::string_view detail)
    : RuntimeError(static_cast<int>(number), describe(number, detail)) {}

RuntimeError::RuntimeError(int number, std::string description, std::string source)
    : number_(number), description_(std::move(description)), source_(std::move(source)) {}

}  // namespace tarlo::variant
