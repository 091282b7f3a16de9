#pragma once
// Which kinds convert into which, and where two of them meet.

#include <string_view>

#include "tsql/ast/expr.h"

namespace tarlo::tsql {

// "an integer", "a number", "text", "a date": for messages.
std::string_view describe(Kind kind);

// The type that both convert to: of the higher kind; decimals wide enough for both; texts without
// bound.
Type commonType(Type a, Type b);

// A Decimal that holds every value of a number; Float stays Float.
Type asDecimal(Type type);

// Annotates `expr` with the type that its surroundings need. Refuses what does not convert by
// itself (a date to a number) and a text literal that says no such value. `column`: the column it
// is written into, whose length then counts.
void want(ast::Expr& expr, Type type, std::string_view column = {});

// Refuses a text literal that does not convert to the type; other expressions pass.
void tryLiteral(const ast::Expr& expr, Type type);

}  // namespace tarlo::tsql
