#pragma once
// From a field id to names, as the compilers ask for them. Their statements differ in whether
// deleted fields are found and in whether the id is quoted, and all of them stand. All raise
// DatabaseError, so for an id that is no number.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "metadata/reader.h"

namespace tarlo::compile {

using metadata::DictionaryReader;

struct Reference {
  std::string table;   // physical name
  std::string column;  // physical name
  std::string tableId;
};
// Appends [table].[column].
void appendReference(std::string& out, const Reference& reference);

// For field tokens: deleted fields are found too. No table id.
std::optional<Reference> tokenReference(DictionaryReader& dictionary, std::string_view id);
// For references in expressions: live fields only. No table id.
std::optional<Reference> expressionReference(DictionaryReader& dictionary, std::string_view id);
// The same, the id being in single quotes.
std::optional<Reference> quotedExpressionReference(DictionaryReader& dictionary,
                                                   std::string_view id);
// As expressionReference, with the table's id.
std::optional<Reference> includedReference(DictionaryReader& dictionary, std::string_view id);

// For statistics and grouping tokens, with what users see. Deleted fields are found too.
struct StatisticsField : Reference {
  std::string tableDisplay;
  std::string display;
};
std::optional<StatisticsField> statisticsField(DictionaryReader& dictionary, std::string_view id);

// What becomes of a token that holds nothing but blanks: the select items keep it, the other
// compilers lose it.
enum class BlankTokens { Keep, Drop };
// Gives the names of a field id. Nothing drops the reference together with the literal text in
// front of it.
using ResolveReference = std::function<std::optional<Reference>(std::string_view id)>;
// Appends a computed field's expression with its references resolved.
void appendExpression(std::string& out, std::string_view expression, BlankTokens blanks,
                      const ResolveReference& resolve);

}  // namespace tarlo::compile
