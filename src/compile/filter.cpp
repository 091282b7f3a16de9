#include <string>

#include "compile/clauses.h"
#include "compile/references.h"
#include "text/pieces.h"
#include "variant/runtime_error.h"
#include "variant/text.h"

namespace tarlo::compile {
namespace {

using text::kPartMark;

// The blanks round the comparison, apart from those that every form has.
struct Spacing {
  std::string_view beforeOperator;  // not with Like
  std::string_view behindExpressionValue;
};

void appendComparison(std::string& out, std::string_view op, std::string_view value,
                      const Spacing& spacing) {
  if (op == "Like" || op == "Not Like") {
    out.append(op).append(" '%").append(value).append("%' ");
  } else if (isExpressionValue(value)) {
    out.append(spacing.beforeOperator).append(op).append(value);
    out.append(spacing.behindExpressionValue);
  } else {
    out.append(spacing.beforeOperator).append(op).append(" '").append(value).append("' ");
  }
}

// The field part of a condition; false when a dictionary look-up finds nothing and the condition
// ends there.
bool appendMarkedField(std::string& out, DictionaryReader& dictionary, const Condition& condition) {
  if (const auto via = tokenReference(dictionary, *condition.via())) {
    out.append(kPartMark).append("[").append(via->column).append("];");
  }
  const auto field = tokenReference(dictionary, condition.field());
  if (!field) return false;
  out.append("[").append(field->column).append("] ");
  return true;
}

bool appendPlainField(std::string& out, std::string_view before, DictionaryReader& dictionary,
                      std::string_view id) {
  const auto field = tokenReference(dictionary, id);
  if (!field) return false;
  out += before;
  appendReference(out, *field);
  out += ' ';
  return true;
}

void appendDictionaryCondition(std::string& out, DictionaryReader& dictionary,
                               const Condition& condition, std::string_view op) {
  const bool hasVia = condition.via().has_value();
  const std::string_view before = !hasVia ? " " : out.empty() ? "" : kPartMark;
  if (!appendPlainField(out, before, dictionary, condition.field())) return;
  appendComparison(out, op, condition.value(), {hasVia ? "" : " ", " "});
  out.append(condition.logic()).append(" ");
}

void appendComputedCondition(std::string& out, DictionaryReader& dictionary,
                             const Condition& condition, std::string_view op,
                             const ComputedFields& computed) {
  const std::string_view item = computed.item(number(condition.token()));
  std::string expression;
  appendExpression(expression, computedExpression(item), BlankTokens::Drop,
                   [&](std::string_view id) {
                     auto reference = expressionReference(dictionary, id);
                     // Deliberate: an unknown field ends the compile, where the select items just
                     // drop it.
                     if (!reference) throw RuntimeError(ErrorNumber::TypeMismatch);
                     return reference;
                   });
  out.append(" ").append(expression).append(" ");
  appendComparison(out, op, condition.value(), {"", " "});
  out += condition.logic();
}

// The far table or alias of the join that leaves by this column; "" when there is none. The
// deletion-flag conditions take part like the joins.
std::string_view aliasOf(std::string_view viaColumn, const Pieces& conditions) {
  for (std::string_view condition : conditions) {
    const Pieces sides = text::split(condition, "=");
    const Pieces left = text::split(piece(sides, 0), ".");
    const Pieces right = text::split(piece(sides, 1), ".");
    if (text::trim(viaColumn) == text::trim(piece(left, 1))) return piece(right, 0);
  }
  return {};
}

}  // namespace

std::string plainFilter(DictionaryReader& dictionary, std::string_view filter) {
  std::string result;
  std::string_view op;  // an unknown code leaves the operator of the condition before
  for (const Condition& condition : conditionsOf(filter)) {
    op = comparisonOperator(condition.code()).value_or(op);
    const bool found = condition.via()
                           ? appendMarkedField(result, dictionary, condition)
                           : appendPlainField(result, " ", dictionary, condition.field());
    if (!found) continue;
    appendComparison(result, op, condition.value(), {"", ""});
    if (condition.logic() != "-1") result += condition.logic();
  }
  return result;
}

std::string filterWithComputed(DictionaryReader& dictionary, std::string_view filter,
                               const ComputedFields& computed) {
  std::string result;
  std::string_view op;
  for (const Condition& condition : conditionsOf(filter)) {
    op = comparisonOperator(condition.code()).value_or(op);
    // An ordinal comparison of text: "-" sorts before "0", so -<n> is a computed field, and so is
    // the token 0.
    if (condition.token() > "0") {
      appendDictionaryCondition(result, dictionary, condition, op);
    } else {
      appendComputedCondition(result, dictionary, condition, op, computed);
    }
  }
  const auto length = static_cast<std::ptrdiff_t>(variant::len(result));
  return std::string(variant::left(result, length - 3));
}

std::string mergedFilter(std::string_view filter, std::string_view where) {
  const Pieces items = filterItems(filter);
  if (items.size() <= 1) return std::string(filter);

  const Pieces conditions = text::split(where, " and ");
  std::string result;
  for (std::string_view item : items) {
    const Pieces parts = text::split(item, ";");
    if (parts.empty()) continue;
    if (parts.size() == 1) {
      result += item;
      continue;
    }
    // Only two parts are used: a ";" inside a value cuts the value there.
    const std::string_view alias = aliasOf(parts[0], conditions);
    if (alias.empty()) {
      result.assign(parts[0]).append(parts[1]);
    } else {
      result.append(" ").append(alias).append(".").append(parts[1]);
    }
  }
  return result;
}

}  // namespace tarlo::compile
