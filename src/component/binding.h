#pragma once
// From an operation's function to its row in the table. What the function's type says - the number
// of arguments, which of them are written back, page or service - is read from the type, so that
// the table cannot disagree with the code.

#include <algorithm>
#include <span>
#include <type_traits>
#include <utility>

#include "component/operations.h"

namespace tarlo::component {

// Arguments are Variants by reference: const Variant& for one that is read, Variant& for one that
// the operation writes into.
template <class Function>
struct Signature;

template <class Result, class... Arguments>
struct Signature<Result (*)(Page&, Arguments...)> {
  static_assert(std::is_same_v<Result, Variant> || std::is_void_v<Result>);
  static_assert((std::is_convertible_v<Variant&, Arguments> && ...));
  static_assert((std::is_reference_v<Arguments> && ...));

  static constexpr std::size_t kArity = sizeof...(Arguments);
  // A page writes itself and returns nothing.
  static constexpr OperationKind kKind =
      std::is_void_v<Result> ? OperationKind::Page : OperationKind::Service;
};

template <auto kFunction>
Variant invokeOperation(Page& page, std::span<Variant> arguments) {
  using Type = Signature<decltype(kFunction)>;
  return [&]<std::size_t... I>(std::index_sequence<I...>)->Variant {
    if constexpr (Type::kKind == OperationKind::Page) {
      kFunction(page, arguments[I]...);
      return {};
    } else {
      return kFunction(page, arguments[I]...);
    }
  }
  (std::make_index_sequence<Type::kArity>{});
}

constexpr std::size_t countNames(std::string_view commaJoined) {
  if (commaJoined.empty()) return 0;
  return static_cast<std::size_t>(std::ranges::count(commaJoined, ',')) + 1;
}

// Does not compile when the number of argument names is not that of the arguments.
template <auto kFunction>
consteval Operation bind(std::string_view name, std::string_view folder, ErrorMode errors,
                         std::string_view argumentNames, frame::Access access,
                         database::StatementRights rights) {
  using Type = Signature<decltype(kFunction)>;
  if (countNames(argumentNames) != Type::kArity) throw "argument names";
  if (Type::kKind == OperationKind::Page && Type::kArity > 0) throw "a page takes no arguments";
  return {name,   folder,        Type::kKind,
          errors, argumentNames, Type::kArity,
          access, rights,        invokeOperation<kFunction>};
}

// An operation whose errors go to its caller.
template <auto kFunction>
consteval Operation raising(std::string_view name, std::string_view folder,
                            std::string_view argumentNames, frame::Access access,
                            database::StatementRights rights) {
  return bind<kFunction>(name, folder, ErrorMode::Raise, argumentNames, access, rights);
}

// An operation that handles its run-time errors itself and goes on.
template <auto kFunction>
consteval Operation resuming(std::string_view name, std::string_view folder,
                             std::string_view argumentNames, frame::Access access,
                             database::StatementRights rights) {
  return bind<kFunction>(name, folder, ErrorMode::ResumeNext, argumentNames, access, rights);
}

// A page operation that also gives a value to callers of its own kind; as a page it writes nothing.
consteval Operation asPage(Operation operation) {
  operation.kind = OperationKind::Page;
  return operation;
}

}  // namespace tarlo::component
