#include "compile/grouping.h"

#include <cstdlib>
#include <string>

#include "compile/clause_set.h"
#include "compile/expression.h"
#include "compile/grammar.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::compile {
namespace {

void appendDictionaryField(std::string& list, Page& page, std::string_view id) {
  if (const auto field = namesOf(plainLookup(page, id))) {
    appendReference(list, *field);
    list += ',';
  }
}

void appendComputedField(std::string& list, Page& page, int token, std::string_view computed) {
  std::string expression;
  appendExpression(expression, computedExpression(computedItem(computed, token)), BlankTokens::Drop,
                   [&](std::string_view id) { return namesOf(expressionLookup(page, id)); });
  if (!expression.empty()) list.append(expression).append(",");
}

// " group by " and what `append` makes of each token.
template <class Append>
std::string groupBy(const Variant& group, Append append) {
  const std::string tokens = trimmedGrouping(group);
  if (tokens.empty()) return {};
  std::string list;
  for (std::string_view token : text::split(tokens, ",")) append(list, token);
  std::string trimmed(text::trim(list));
  cutSuffix(trimmed, ",");
  return " group by " + trimmed;
}

}  // namespace

std::string trimmedGrouping(const Variant& group) {
  const std::string text = variant::spliced(group);
  return std::string(text::trim(text));
}

Variant Query_getGroupbyNoVir(Page& page, const Variant& group) {
  return groupBy(group, [&](std::string& list, std::string_view token) {
    appendDictionaryField(list, page, token);
  });
}

Variant Query_getGroupby(Page& page, const Variant& group, const Variant& computed) {
  const std::string fields = variant::spliced(computed);
  return groupBy(group, [&](std::string& list, std::string_view token) {
    // Deliberate: stored ids beyond 16 bits have always been refused on this path.
    const int value = variant::toInt16(Variant(token));
    if (value < 0) {
      appendComputedField(list, page, value, fields);
    } else {
      appendDictionaryField(list, page, token);
    }
  });
}

}  // namespace tarlo::compile
