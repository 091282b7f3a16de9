#include "metadata/scheme_copy.h"

#include "frame/data.h"
#include "metadata/statement_text.h"
#include "text/sql_text.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::metadata {
namespace {

using variant::spliced;

constexpr std::string_view kColumns =
    "Query_ID,Query_Name,Query_Desc,Query_Fields,Zembra_WriteDate,Query_Prikey,"
    "Query_Dic,Query_System,Query_HasStatic,Query_IsDataAlert,Zembra_Flag,Zembra_ModiDate,"
    "Zembra_ModiUser,Zembra_User,Query_MultiRelSel,Query_MultiRel";
constexpr std::ptrdiff_t kStatement = 3;
constexpr std::ptrdiff_t kModified = 11;

std::string insertOf(const Array& scheme) {
  std::string sql = joined({"insert Zembra_Query_Ver2(", kColumns, ") values('"});
  for (std::ptrdiff_t column = 0; column <= scheme.upperBound(1); ++column) {
    if (column > 0) sql += "','";
    const std::string value = spliced(scheme.at(column, 0));
    sql += column == kStatement ? text::doubledQuotes(value) : value;
  }
  return sql + "')";
}

std::string schemesOf(std::string_view column, const Variant& tableid) {
  return joined(
      {"select ", column, " from Zembra_Query_Main where Query_MainTBID=", spliced(tableid)});
}

}  // namespace

Variant CopyQuery(Page& page, const Variant& queryid) {
  const Variant rows = frame::execSQLRows(
      page,
      joined({"select ", kColumns, " from Zembra_Query_Main where Query_ID=", spliced(queryid)}));
  if (!rows.isArray()) return -1;
  const Array& scheme = rows.array();
  const Variant versions = frame::execSQLRows(
      page, joined({"select Zembra_ID from Zembra_Query_Ver2 where Query_ID=", spliced(queryid),
                    " and Zembra_ModiDate >='", spliced(scheme.at(kModified, 0)), "'"}));
  if (versions.isArray()) return versions.array().at(0, 0);
  // The insert gives its key as a row.
  const Variant inserted = frame::execSQLRows(page, insertOf(scheme));
  return inserted.array().at(0, 0);
}

Variant getAllQueryid(Page& page, const Variant& tableid) {
  return frame::execSQLRows(page, schemesOf("Query_ID", tableid));
}

Variant DecTableinUse(Page& page, const Variant& tableid) {
  return frame::execSQLRows(page, schemesOf("Query_MainTBID", tableid)).isArray();
}

}  // namespace tarlo::metadata
