#include "metadata/stored_schemes.h"

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/operations.h"
#include "metadata/select_list.h"
#include "metadata/stored_rows.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using frame::Row;
using frame::Rows;
using text::joined;
using variant::spliced;

Rows statementRows(Page& page, std::string_view scheme, Version version) {
  return storedRows(page, version, "SELECT Query_Fields FROM Zembra_Query_Ver2 where Zembra_ID=",
                    "SELECT Query_Fields FROM Zembra_Query_Main where Query_ID=", scheme);
}

Rows relationsRows(Page& page, std::string_view scheme, Version version) {
  return storedRows(page, version,
                    "SELECT Query_MultiRelSel FROM Zembra_Query_Ver2 where Zembra_ID=",
                    "SELECT Query_MultiRelSel FROM Zembra_Query_Main where Query_ID=", scheme);
}

// Nothing without a key row, and without a field of that key.
Rows keyTableRows(Page& page, std::string_view scheme, Version version) {
  ErrorState errors;
  const Rows keys = errors.value([&] { return keyRows(page, scheme, version); });
  if (keys.empty()) return {};
  return errors.value([&] {
    return frame::rows(page, "select DDF_TableID from Zembra_DataDict_Field where Zembra_ID=" +
                                 keys.front().text(0));
  });
}

std::vector<std::string> titlesOf(Page& page, std::string_view statement) {
  return frame::asDesigner(page, [&] { return frame::titles(page, statement); });
}

std::string schemesOf(std::string_view column, std::string_view tableId) {
  return joined({"select ", column, " from Zembra_Query_Main where Query_MainTBID=", tableId});
}

constexpr std::string_view kCopied =
    "Query_ID,Query_Name,Query_Desc,Query_Fields,Zembra_WriteDate,Query_Prikey,"
    "Query_Dic,Query_System,Query_HasStatic,Query_IsDataAlert,Zembra_Flag,Zembra_ModiDate,"
    "Zembra_ModiUser,Zembra_User,Query_MultiRelSel,Query_MultiRel";
constexpr std::size_t kStatement = 3;
constexpr std::size_t kModified = 11;

std::string insertOf(const Row& scheme) {
  std::string sql = joined({"insert Zembra_Query_Ver2(", kCopied, ") values('"});
  for (std::size_t column = 0; column < scheme.columns(); ++column) {
    if (column > 0) sql += "','";
    const std::string value = scheme.text(column);
    sql += column == kStatement ? text::doubledQuotes(value) : value;
  }
  return sql + "')";
}

// -1 for an unknown scheme.
Variant frozenKey(Page& page, std::string_view scheme) {
  const Rows rows = frame::rows(
      page, joined({"select ", kCopied, " from Zembra_Query_Main where Query_ID=", scheme}));
  if (rows.empty()) return -1;
  const Row row = rows.front();
  const Rows versions =
      frame::rows(page, joined({"select Zembra_ID from Zembra_Query_Ver2 where Query_ID=", scheme,
                                " and Zembra_ModiDate >='", row.text(kModified), "'"}));
  if (!versions.empty()) return versions.front().value(0);
  // The insert gives its key as a row.
  return frame::rows(page, insertOf(row)).front().value(0);
}

}  // namespace

Version versionOf(const Variant& isInstance) {
  return variant::equals(isInstance, true) ? Version::Frozen : Version::Current;
}

std::optional<std::string> storedStatement(Page& page, std::string_view scheme, Version version) {
  const Rows rows = statementRows(page, scheme, version);
  if (rows.empty() || rows.front().value(0).isNull()) return std::nullopt;
  return rows.front().text(0);
}

std::optional<std::string> selectedRelations(Page& page, std::string_view scheme, Version version) {
  const Rows rows = relationsRows(page, scheme, version);
  if (rows.empty()) return std::nullopt;
  return rows.front().text(0);
}

std::optional<std::string> keyTable(Page& page, std::string_view scheme, Version version) {
  const Rows rows = keyTableRows(page, scheme, version);
  if (rows.empty()) return std::nullopt;
  return rows.front().text(0);
}

std::optional<std::string> keyColumn(Page& page, std::string_view scheme, Version version) {
  ErrorState errors;
  const Rows keys = errors.value([&] { return keyRows(page, scheme, version); });
  if (keys.empty() || keys.front().text(0) == "0") return std::nullopt;
  const Rows names = errors.value([&] {
    return frame::rows(page, joined({"select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Field as "
                                     "b,Zembra_DataDict_Table as a where b.Zembra_ID = ",
                                     keys.front().text(0), " and b.DDF_TableID = a.Zembra_ID"}));
  });
  if (names.empty()) return std::nullopt;
  return joined({"[", names.front().text(0), "].[", names.front().text(1), "]"});
}

std::optional<std::vector<std::string>> columnTitles(Page& page, std::string_view scheme,
                                                     Version version) {
  const auto statement = storedStatement(page, scheme, version);
  if (!statement) return std::nullopt;
  return titlesOf(page, *statement);
}

std::optional<std::vector<std::string>> columnExpressions(Page& page, std::string_view scheme,
                                                          Version version) {
  const auto statement = storedStatement(page, scheme, version);
  if (!statement) return std::nullopt;
  std::string list = text::replace(selectListOf(*statement), "\r\n", "");
  return expressionsOf(std::move(list), titlesOf(page, *statement));
}

std::optional<std::vector<QualifiedName>> columnNames(Page& page, std::string_view scheme,
                                                      Version version) {
  const auto statement = storedStatement(page, scheme, version);
  if (!statement) return std::nullopt;
  return columnsOf(std::string(selectListOf(*statement)), titlesOf(page, *statement));
}

std::vector<std::string> schemesOver(Page& page, std::string_view tableId) {
  std::vector<std::string> ids;
  for (Row row : frame::rows(page, schemesOf("Query_ID", tableId))) ids.push_back(row.text(0));
  return ids;
}

std::optional<std::string> freeze(Page& page, std::string_view scheme) {
  const std::string key = spliced(frozenKey(page, scheme));
  if (key == "-1") return std::nullopt;
  return key;
}

Variant getQuerySQL(Page& page, const Variant& queryid, const Variant& isInstance) {
  ErrorState errors;
  Variant statement = variant::Null{};
  errors.run([&] {
    const Rows rows = statementRows(page, spliced(queryid), versionOf(isInstance));
    if (!rows.empty()) statement = rows.front().value(0);
  });
  return statement;
}

Variant getQueryAllTitle(Page& page, const Variant& queryid, const Variant& isInstance) {
  const auto titles = columnTitles(page, spliced(queryid), versionOf(isInstance));
  return titles ? frame::titleArray(*titles) : Variant(variant::Null{});
}

Variant getQueryAllCal(Page& page, const Variant& queryid, const Variant& isInstance) {
  const auto expressions = columnExpressions(page, spliced(queryid), versionOf(isInstance));
  return expressions ? frame::titleArray(*expressions) : Variant(variant::Null{});
}

Variant getQueryAllField(Page& page, const Variant& queryid, const Variant& isInstance) {
  const auto names = columnNames(page, spliced(queryid), versionOf(isInstance));
  return names ? pairArray(*names) : Variant(variant::Null{});
}

Variant KeyField2TableID(Page& page, const Variant& queryid, const Variant& isInstance) {
  ErrorState errors;
  const Rows rows =
      errors.value([&] { return keyTableRows(page, spliced(queryid), versionOf(isInstance)); });
  return rows.empty() ? Variant(-1) : rows.front().value(0);
}

Variant getQueryKeyField(Page& page, const Variant& queryid, const Variant& isInstance) {
  ErrorState errors;
  const auto column =
      errors.value([&] { return keyColumn(page, spliced(queryid), versionOf(isInstance)); });
  return column ? Variant(*column) : Variant(-1);
}

Variant GetQuerySelRel(Page& page, const Variant& queryid, const Variant& isInstance) {
  const Rows rows = relationsRows(page, spliced(queryid), versionOf(isInstance));
  return rows.empty() ? Variant(-1) : rows.front().value(0);
}

Variant SQL2Fields(Page&, const Variant& SQLstr) {
  return pairArray(firstOperandsOf(variant::toText(SQLstr)));
}

Variant CopyQuery(Page& page, const Variant& queryid) {
  return frozenKey(page, spliced(queryid));
}

Variant getAllQueryid(Page& page, const Variant& tableid) {
  return frame::rows(page, schemesOf("Query_ID", spliced(tableid))).table();
}

Variant DecTableinUse(Page& page, const Variant& tableid) {
  return !frame::rows(page, schemesOf("Query_MainTBID", spliced(tableid))).empty();
}

}  // namespace tarlo::metadata
