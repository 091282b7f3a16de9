#pragma once
// The serialised strings of a scheme, taken apart: computed fields, expressions, filter conditions,
// statistics. Nothing is escaped in them, so taking apart is splitting. The compilers differ in
// what they do with the pieces, not in how they find them. Everything here points into the text
// that it was made from.

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace tarlo::compile {

using Pieces = std::vector<std::string_view>;

// Piece i of a split text; error 9 when there is no such piece.
std::string_view piece(const Pieces& pieces, std::size_t i);

// A number as the tests on tokens and codes read it; error 13 for text that is none.
double number(std::string_view token);

// The computed fields of a scheme, name:expression joined by ";".
class ComputedFields {
 public:
  explicit ComputedFields(std::string_view list);
  const Pieces& items() const { return items_; }
  // The field that the token -<n> means: item |n| - 1 from 0. Error 9 when there is no such item.
  std::string_view item(double token) const;

 private:
  Pieces items_;
};
// Text in front of the first ":" of an item; error 5 when it has none.
std::string_view computedName(std::string_view item);
// Text behind the first ":" of an item, the whole of it when it has none.
std::string_view computedExpression(std::string_view item);

// One token of an expression: literal text, and the field reference that follows it.
struct ExpressionToken {
  std::string_view text;                      // the whole token
  std::string_view literal;                   // in front of the first "["
  std::optional<std::string_view> reference;  // a field id; text behind a second "[" is lost
};
std::vector<ExpressionToken> expressionTokens(std::string_view expression);

// The conditions of a filter and the items of statistics, as they are written.
Pieces filterItems(std::string_view filter);
Pieces statisticsItems(std::string_view statistics);

// One condition of a filter, token, comparison code, value and logic joined by ",". A part that is
// missing is error 9 when it is asked for, and not before: a condition that is dropped earlier may
// lack the rest.
class Condition {
 public:
  explicit Condition(std::string_view text);
  std::string_view token() const { return piece(parts_, 0); }
  std::string_view code() const { return piece(parts_, 1); }
  std::string_view value() const { return piece(parts_, 2); }
  std::string_view logic() const { return piece(parts_, 3); }
  // The parts that are there, for pages that show a condition whether or not it compiles.
  const Pieces& parts() const { return parts_; }

  // The token cut at its "|", which stands before the field that the table is reached by.
  std::string_view field() const;
  std::optional<std::string_view> via() const;

 private:
  Pieces parts_;
};
std::vector<Condition> conditionsOf(std::string_view filter);

// One item of statistics, token and function code joined by ",". Both as those of a condition.
class Statistic {
 public:
  explicit Statistic(std::string_view text);
  std::string_view token() const { return piece(parts_, 0); }
  std::string_view code() const { return piece(parts_, 1); }
  const Pieces& parts() const { return parts_; }

 private:
  Pieces parts_;
};
std::vector<Statistic> statisticsOf(std::string_view statistics);

// By code, from 1: the order of the operator lists in the wizards.
inline constexpr std::array<std::string_view, 8> kComparisonOperators = {
    ">", "<", "<>", ">=", "<=", "Like", "=", "Not Like"};

// The comparison operator of a code, 1 to 8; nothing for any other number. Error 13 when the code
// is no number.
std::optional<std::string_view> comparisonOperator(std::string_view code);

// Whether a comparison value is SQL text rather than a literal: it holds "(" and ")" anywhere.
bool isExpressionValue(std::string_view value);

// The function of a statistics code, compared as text; "" for the field itself, nothing for an
// unknown code.
std::optional<std::string_view> statisticsFunction(std::string_view code);

}  // namespace tarlo::compile
