#include <string>

#include "compile/clauses.h"
#include "compile/references.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::compile {
namespace {

void appendDictionaryField(std::string& list, DictionaryReader& dictionary, std::string_view id) {
  if (const auto field = tokenReference(dictionary, id)) {
    appendReference(list, *field);
    list += ',';
  }
}

void appendComputedField(std::string& list, DictionaryReader& dictionary, std::string_view item) {
  std::string expression;
  appendExpression(expression, computedExpression(item), BlankTokens::Drop,
                   [&](std::string_view id) { return expressionReference(dictionary, id); });
  if (!expression.empty()) list.append(expression).append(",");
}

// " group by " and what `append` makes of each token.
template <class Append>
std::string groupByTokens(std::string_view grouping, Append append) {
  if (text::trim(grouping).empty()) return {};
  std::string list;
  for (std::string_view token : groupingTokens(grouping)) append(list, token);
  std::string trimmed(text::trim(list));
  cutSuffix(trimmed, ",");
  return " group by " + trimmed;
}

}  // namespace

Pieces groupingTokens(std::string_view grouping) {
  return text::split(text::trim(grouping), ",");
}

std::string groupBy(DictionaryReader& dictionary, std::string_view grouping) {
  return groupByTokens(grouping, [&](std::string& list, std::string_view token) {
    appendDictionaryField(list, dictionary, token);
  });
}

std::string groupByWithComputed(DictionaryReader& dictionary, std::string_view grouping,
                                const ComputedFields& computed) {
  return groupByTokens(grouping, [&](std::string& list, std::string_view token) {
    // Deliberate: stored ids beyond 16 bits have always been refused on this path.
    const int value = variant::toInt16(Variant(token));
    if (value < 0) {
      appendComputedField(list, dictionary, computed.item(value));
    } else {
      appendDictionaryField(list, dictionary, token);
    }
  });
}

}  // namespace tarlo::compile
