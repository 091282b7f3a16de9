#pragma once
// The compilers of the parts of a definition: each gives a piece of the statement's text. They are
// many because they differ, in their blanks, in which fields they find and in what they do without
// one, and stored statements hang on all of it.

#include <string>
#include <string_view>

#include "compile/definition.h"
#include "compile/grammar.h"
#include "metadata/reader.h"

namespace tarlo::compile {

using metadata::DictionaryReader;

// The parts of a statement, without their leading keywords.
struct ClauseSet {
  std::string select;
  std::string from;
  std::string where;  // conditions joined by " and "
};

// Loads what a definition reaches, so that its compilers ask the database no more. Columns: whether
// all columns of its tables take part, or only those that it names.
enum class Columns { All, Named };
void loadFor(DictionaryReader& dictionary, const Definition& definition, Columns columns);

// Of a scheme without statistics: every live field of the main table and of every table that a
// selected relation reaches. A table that was reached before gets an alias made of its name and the
// index of the row that reaches it again. A relation whose field is gone joins its table without a
// condition. Look-ups that find nothing raise nothing: without a relation there is the main table
// alone, without a main table there are empty brackets.
ClauseSet fieldListClauses(DictionaryReader& dictionary, std::string_view mainTable,
                           std::string_view relations);

// Of a scheme with statistics: the select items are the statistics items alone, and tables are
// joined only as far as these and the grouping need them. Shares no rule with the field list: no
// aliases, one hop only (a table reached in two hops is joined straight to the main table), no
// deletion flags but the main table's, and joined tables stand in the FROM list without brackets.
// A computed field is selected only if an item names it. Raises 9 for an item without a code or a
// computed field that does not exist, 13 for a token that is no number, for a field that is not
// found and for a table that no relation reaches, 5 for a computed field without a name.
ClauseSet statisticsClauses(DictionaryReader& dictionary, const Definition& definition,
                            const ComputedFields& computed);

// "<expression> as [<name>]" for each computed field, comma-joined; "" for none. Never raises: a
// reference that is not found is dropped with the literal text in front of it, and a step that
// fails leaves its variable as it was, so an item without ":" bears the name of the item before it.
std::string computedItems(DictionaryReader& dictionary, const ComputedFields& computed);

// The conditions of a scheme without computed fields. A condition on a field that is reached by a
// via field is left as a marked item, "|||[via column];[column] <comparison>", for the filter merge
// to put the table's alias in. A condition whose field is not found is dropped with its logic word.
// "" for an empty filter. Raises 9 for a condition with too few parts, 13 for a code that is no
// number.
std::string plainFilter(DictionaryReader& dictionary, std::string_view filter);
// With computed fields. The via field is not used, so such a condition bears the table's physical
// name; "|||" stands in front of it only as a separator. The last three characters are cut whatever
// they are: normally the "-1" of the last condition. Raises as above, 9 for a computed field that
// does not exist, 13 for a reference that is not found, and 5 when nothing was compiled, so also
// for an empty filter.
std::string filterWithComputed(DictionaryReader& dictionary, std::string_view filter,
                               const ComputedFields& computed);

// Finds, for each marked item of a compiled filter, which table or alias it means: the first join
// condition in `where` whose left side has the via column gives it, its right side's. Text without
// "|||" comes back unchanged. When no condition matches, everything merged so far is lost and the
// via column stands directly against the column; the statement is then refused by the database, and
// callers rely on that. Raises 9 when a marked item meets a condition that is not of the form
// table.column=other.
std::string mergedFilter(std::string_view filter, std::string_view where);

// " group by " and the fields that were found, comma-joined; "" for an empty or blank grouping.
// With none found the statement ends there and the database refuses it. Raises DatabaseError for a
// token that is no number.
std::string groupBy(DictionaryReader& dictionary, std::string_view grouping);
// With computed fields, whose expressions are resolved. Tokens are 16-bit numbers here and only
// here: error 6 for an id above 32767, 13 for a token that is no number, 9 for a computed field
// that does not exist.
std::string groupByWithComputed(DictionaryReader& dictionary, std::string_view grouping,
                                const ComputedFields& computed);
// The tokens of a grouping.
Pieces groupingTokens(std::string_view grouping);

// Removes `suffix` from the end of `text` when it stands there.
void cutSuffix(std::string& text, std::string_view suffix);

}  // namespace tarlo::compile
