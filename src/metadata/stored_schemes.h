#pragma once
// What is stored with a scheme, as it is now or as a frozen version of it: the statement, what the
// statement yields, the key and the selected relations.
//
// Titles are asked of the database; expressions and columns are found by plain text operations that
// rely on the shape of compiled statements, "select ", expressions each with " as [title]" joined
// by ",", " from ". A statement of another shape is not detected: it gives other pieces, or raises.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::metadata {

// A frozen version has a key of its own, which then is the id.
enum class Version { Current, Frozen };
// What operations are told by `isInstance`: True is a frozen version.
Version versionOf(const Variant& isInstance);

// Nothing for an unknown scheme. Those that never raise answer a failed statement in the same way;
// the others raise DatabaseError.

std::optional<std::string> storedStatement(Page& page, std::string_view scheme,
                                           Version version = Version::Current);
std::optional<std::string> selectedRelations(Page& page, std::string_view scheme,
                                             Version version = Version::Current);
// The table of the scheme's key field; never raises.
std::optional<std::string> keyTable(Page& page, std::string_view scheme,
                                    Version version = Version::Current);
// [table].[column] of the key; never raises.
std::optional<std::string> keyColumn(Page& page, std::string_view scheme,
                                     Version version = Version::Current);

// These raise what the database says of the statement.

std::optional<std::vector<std::string>> columnTitles(Page& page, std::string_view scheme,
                                                     Version version = Version::Current);
// One for each title, and at the end what stands behind the last one. Error 9 when a title does not
// stand in the statement.
std::optional<std::vector<std::string>> columnExpressions(Page& page, std::string_view scheme,
                                                          Version version = Version::Current);

struct QualifiedName {
  std::string table;
  std::string column;
};
// Of statements of plain columns; an expression is cut at its first dots. Error 9 for one without a
// dot.
std::optional<std::vector<QualifiedName>> columnNames(Page& page, std::string_view scheme,
                                                      Version version = Version::Current);

// Ids of the schemes over the table, deleted ones included. Raises DatabaseError.
std::vector<std::string> schemesOver(Page& page, std::string_view tableId);

// The key of the version that is valid now: the scheme is copied unless a version at least as new
// is there. Nothing for an unknown scheme. Raises DatabaseError; a quote in a scheme's name or
// description breaks the insert, since only the statement's quotes are doubled.
std::optional<std::string> freeze(Page& page, std::string_view scheme);

}  // namespace tarlo::metadata
