#include "compile/filter.h"

#include <string>

#include "compile/expression.h"
#include "compile/grammar.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/runtime_error.h"
#include "variant/text.h"

namespace tarlo::compile {
namespace {

// The parts of a condition.
enum Part : std::size_t { kToken, kCode, kValue, kLogic };

// A field token, cut at its "|" when it has one.
struct FieldToken {
  std::string_view field;
  std::string_view via;
  bool hasVia = false;
};

FieldToken fieldToken(std::string_view token) {
  const std::size_t bar = token.find('|');
  if (bar == std::string_view::npos) return {token, {}, false};
  return {token.substr(0, bar), token.substr(bar + 1), true};
}

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
bool appendMarkedField(std::string& out, Page& page, const FieldToken& token) {
  if (const auto via = namesOf(plainLookup(page, token.via))) {
    out.append("|||[").append(via->column).append("];");
  }
  const auto field = namesOf(plainLookup(page, token.field));
  if (!field) return false;
  out.append("[").append(field->column).append("] ");
  return true;
}

bool appendPlainField(std::string& out, std::string_view before, Page& page, std::string_view id) {
  const auto field = namesOf(plainLookup(page, id));
  if (!field) return false;
  out += before;
  appendReference(out, *field);
  out += ' ';
  return true;
}

void appendDictionaryCondition(std::string& out, Page& page, const Pieces& parts,
                               std::string_view op) {
  const FieldToken token = fieldToken(piece(parts, kToken));
  const std::string_view before = !token.hasVia ? " " : out.empty() ? "" : "|||";
  if (!appendPlainField(out, before, page, token.field)) return;
  appendComparison(out, op, piece(parts, kValue), {token.hasVia ? "" : " ", " "});
  out.append(piece(parts, kLogic)).append(" ");
}

void appendComputedCondition(std::string& out, Page& page, const Pieces& parts, std::string_view op,
                             std::string_view computed) {
  const std::string_view item = computedItem(computed, number(piece(parts, kToken)));
  std::string expression;
  appendExpression(expression, computedExpression(item), BlankTokens::Drop,
                   [&](std::string_view id) {
                     const Variant rows = expressionLookup(page, id);
                     // Deliberate: an unknown field ends the compile, where the select items just
                     // drop it.
                     if (!rows.isArray()) throw RuntimeError(ErrorNumber::TypeMismatch);
                     return namesOf(rows);
                   });
  out.append(" ").append(expression).append(" ");
  appendComparison(out, op, piece(parts, kValue), {"", " "});
  out += piece(parts, kLogic);
}

}  // namespace

Variant Query_getfilterNoVir(Page& page, const Variant& filter) {
  const std::string list = variant::toText(filter);
  std::string result;
  std::string_view op;  // an unknown code leaves the operator of the condition before
  for (std::string_view condition : text::split(list, "|||")) {
    const Pieces parts = text::split(condition, ",");
    op = comparisonOperator(piece(parts, kCode)).value_or(op);
    const FieldToken token = fieldToken(piece(parts, kToken));
    const bool found = token.hasVia ? appendMarkedField(result, page, token)
                                    : appendPlainField(result, " ", page, token.field);
    if (!found) continue;
    appendComparison(result, op, piece(parts, kValue), {"", ""});
    if (piece(parts, kLogic) != "-1") result += parts[kLogic];
  }
  return result;
}

Variant Query_getfilter(Page& page, const Variant& filter, const Variant& computed) {
  const std::string list = variant::toText(filter);
  const std::string fields = variant::spliced(computed);
  std::string result;
  std::string_view op;
  for (std::string_view condition : text::split(list, "|||")) {
    const Pieces parts = text::split(condition, ",");
    op = comparisonOperator(piece(parts, kCode)).value_or(op);
    // An ordinal comparison of text: "-" sorts before "0", so -<n> is a computed field, and so is
    // the token 0.
    if (piece(parts, kToken) > "0") {
      appendDictionaryCondition(result, page, parts, op);
    } else {
      appendComputedCondition(result, page, parts, op, fields);
    }
  }
  const auto length = static_cast<std::ptrdiff_t>(variant::len(result));
  return variant::left(result, length - 3);
}

}  // namespace tarlo::compile
