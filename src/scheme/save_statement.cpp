#include "scheme/save_statement.h"

#include <string_view>
#include <vector>

#include "text/sql_text.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using text::doubledQuotes;
using variant::spliced;

std::string updateStatement(const SchemeRow& row, bool hasStatistics) {
  const compile::Definition& definition = row.definition;
  std::string sql = "update Zembra_Query_Main set Query_Name='" + row.name;
  const auto set = [&](std::string_view column, std::string_view value) {
    sql.append("',").append(column).append("='").append(value);
  };
  set("Query_Desc", row.description);
  set("Query_Fields", doubledQuotes(row.statement));
  set("Query_HasStatic", hasStatistics ? "1" : "0");
  set("Query_Prikey", row.keyField);
  set("Query_System", row.kind);
  set("Query_Dic", row.directory);
  set("Zembra_ModiUser", row.user);
  set("Zembra_ModiDate", row.now);
  set("Query_MainTBID", spliced(definition.mainTable));
  set("Query_Vir", doubledQuotes(spliced(definition.computed)));
  set("Query_Rel", doubledQuotes(spliced(definition.filter)));
  set("Query_Static", doubledQuotes(spliced(definition.statistics)));
  set("Query_Group", spliced(definition.grouping));
  if (!hasStatistics) {
    sql.append("',Query_MultiRel=").append(row.isMultiLevel);
    sql.append(",Query_MultiRelSel='").append(spliced(definition.relations));
  }
  return sql.append("' where Query_ID=").append(row.id);
}

std::string insertStatement(const SchemeRow& row, bool hasStatistics) {
  const compile::Definition& definition = row.definition;
  std::string sql =
      "insert into Zembra_Query_Main(Query_Name,Query_Desc,Query_Fields,Zembra_WriteDate,"
      "Query_Prikey,Query_System,Query_Dic,Zembra_User,Query_MainTBID,Query_Vir,Query_Rel,"
      "Query_Static,Query_Group,";
  sql += hasStatistics ? "Query_HasStatic)" : "Query_MultiRel,Query_MultiRelSel)";
  sql.append(" values('").append(row.name);
  const std::vector<std::string> values = {row.description,
                                           doubledQuotes(row.statement),
                                           row.now,
                                           row.keyField,
                                           row.kind,
                                           row.directory,
                                           row.user,
                                           spliced(definition.mainTable),
                                           doubledQuotes(spliced(definition.computed)),
                                           doubledQuotes(spliced(definition.filter)),
                                           doubledQuotes(spliced(definition.statistics)),
                                           doubledQuotes(spliced(definition.grouping))};
  for (const std::string& value : values) sql.append("','").append(value);
  if (hasStatistics) return sql.append("','1')");
  sql.append("',").append(row.isMultiLevel).append(",'");
  return sql.append(spliced(definition.relations)).append("')");
}

}  // namespace

std::string saveStatement(const SchemeRow& row) {
  const bool hasStatistics = !spliced(row.definition.statistics).empty();
  return row.isChange ? updateStatement(row, hasStatistics) : insertStatement(row, hasStatistics);
}

}  // namespace tarlo::scheme
