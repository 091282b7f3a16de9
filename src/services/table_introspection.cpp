#include "services/table_introspection.h"

#include "frame/data.h"
#include "frame/policy.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

using variant::spliced;

// The id of a table by name, as a statement.
std::string tableIdOf(const Variant& name) {
  return "SELECT DDT_ID FROM Zembra_DataDict_Table WHERE DDT_Name ='" + spliced(name) + "'";
}

std::string ofTable(const Variant& name) {
  return " FROM Zembra_DataDict_Field WHERE DDF_TableID =(" + tableIdOf(name) + ")";
}

Variant requiredCell(Page& page, const std::string& sql) {
  const Variant rows = frame::execSQLRows(page, Variant(sql));
  if (!rows.isArray()) throw RuntimeError(ErrorNumber::TypeMismatch, "no such table or field");
  return rows.array().at(0, 0);
}

}  // namespace

Variant getUserTableName(Page& page, const Variant&, const Variant& showAll) {
  const std::string condition =
      variant::equals(showAll, true) ? "" : "substring(DDT_Name,1,7)='UserTb_' and ";
  return frame::execSQLRows(
      page, Variant("select DDT_Name,DDT_CName from Zembra_DataDict_Table where " + condition +
                    "DDT_Status <> 1"));
}

Variant getUserFieldName(Page& page, const Variant& sTableName) {
  return frame::execSQLRows(page, Variant("SELECT DDF_Name,DDF_CName" + ofTable(sTableName)));
}

Variant getTableIDField(Page& page, const Variant& sTableName) {
  return requiredCell(page, "SELECT DDF_Name" + ofTable(sTableName) + " and DDF_Type=1");
}

Variant getTableIDValue(Page& page, const Variant& sTableName) {
  return requiredCell(page, tableIdOf(sTableName));
}

Variant getFieldIDValue(Page& page, const Variant& sTableName, const Variant& sFieldName) {
  return requiredCell(
      page, "SELECT DDF_ID" + ofTable(sTableName) + " and DDF_Name='" + spliced(sFieldName) + "'");
}

Variant getPolicyInfo(Page& page, const Variant& strName) {
  return frame::getPolicyRow(page, strName);
}

}  // namespace tarlo::services
