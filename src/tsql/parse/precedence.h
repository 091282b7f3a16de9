#pragma once
// The one table of operators: the parser reads by it, the T-SQL printer sets parentheses by it.

#include <string_view>

#include "tsql/ast/condition.h"
#include "tsql/ast/operators.h"
#include "tsql/lex/token.h"

namespace tarlo::tsql {

// From loose to tight. A sign binds looser than `*` and tighter than `+`, deliberately: that is
// T-SQL's own rule, by which 100 / -100 * 10 is 100 / -(100 * 10).
enum Level : int {
  kAny,
  kOr,
  kAnd,
  kNot,
  kPredicate,
  kAdditive,
  kSign,
  kMultiplicative,
  kBitNot,
  kPrimary
};

struct BinaryEntry {
  Symbol symbol;
  ast::BinaryOp op;
  Level level;
  std::string_view text;
};
inline constexpr BinaryEntry kBinaryOperators[] = {
    {Symbol::Plus, ast::BinaryOp::Add, kAdditive, "+"},
    {Symbol::Minus, ast::BinaryOp::Subtract, kAdditive, "-"},
    {Symbol::Star, ast::BinaryOp::Multiply, kMultiplicative, "*"},
    {Symbol::Slash, ast::BinaryOp::Divide, kMultiplicative, "/"},
    {Symbol::Percent, ast::BinaryOp::Modulo, kMultiplicative, "%"},
    {Symbol::Ampersand, ast::BinaryOp::BitAnd, kAdditive, "&"},
    {Symbol::Bar, ast::BinaryOp::BitOr, kAdditive, "|"},
    {Symbol::Caret, ast::BinaryOp::BitXor, kAdditive, "^"}};

struct UnaryEntry {
  Symbol symbol;
  ast::UnaryOp op;
  Level level;
  std::string_view text;
};
inline constexpr UnaryEntry kUnaryOperators[] = {
    {Symbol::Minus, ast::UnaryOp::Minus, kSign, "-"},
    {Symbol::Plus, ast::UnaryOp::Plus, kSign, "+"},
    {Symbol::Tilde, ast::UnaryOp::BitNot, kBitNot, "~"}};

struct ComparisonEntry {
  Symbol symbol;
  ast::ComparisonOp op;
  std::string_view text;
};
inline constexpr ComparisonEntry kComparisons[] = {
    {Symbol::Equal, ast::ComparisonOp::Equal, "="},
    {Symbol::NotEqual, ast::ComparisonOp::NotEqual, "<>"},
    {Symbol::Less, ast::ComparisonOp::Less, "<"},
    {Symbol::LessOrEqual, ast::ComparisonOp::LessOrEqual, "<="},
    {Symbol::Greater, ast::ComparisonOp::Greater, ">"},
    {Symbol::GreaterOrEqual, ast::ComparisonOp::GreaterOrEqual, ">="}};

struct LogicEntry {
  Keyword keyword;
  ast::LogicOp op;
  Level level;
  std::string_view text;
};
inline constexpr LogicEntry kLogicOperators[] = {{Keyword::And, ast::LogicOp::And, kAnd, "AND"},
                                                 {Keyword::Or, ast::LogicOp::Or, kOr, "OR"}};

// The entry with this symbol, keyword or operation; nullptr when there is none.
template <class Table, class Value, class Member>
constexpr auto findEntry(const Table& table, Value value, Member member) -> decltype(&table[0]) {
  for (const auto& entry : table) {
    if (entry.*member == value) return &entry;
  }
  return nullptr;
}

}  // namespace tarlo::tsql
