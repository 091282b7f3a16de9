#include "scheme/scheme_store.h"

#include "compile/definition.h"
#include "frame/data.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

compile::Definition definitionOf(const Scheme& scheme) {
  return {scheme.mainTable,  scheme.computed, scheme.filter,
          scheme.statistics, scheme.grouping, scheme.relations};
}

}  // namespace

std::optional<Scheme> loadScheme(Page& page, int id) {
  const Variant rows =
      frame::execSQLRows(page,
                         "select Query_ID,Query_Name,Query_Desc,Query_MainTBID,Query_Vir,Query_Rel,"
                         "Query_Static,Query_Group,Query_MultiRelSel,Query_Fields,Zembra_Flag"
                         " from Zembra_Query_Main where Query_ID=" +
                             std::to_string(id));
  if (!rows.isArray()) return std::nullopt;
  const Array& row = rows.array();
  Scheme scheme;
  scheme.id = variant::toInt32(row.at(0, 0));
  scheme.name = variant::spliced(row.at(1, 0));
  scheme.description = variant::spliced(row.at(2, 0));
  scheme.mainTable = row.at(3, 0);
  scheme.computed = row.at(4, 0);
  scheme.filter = row.at(5, 0);
  scheme.statistics = row.at(6, 0);
  scheme.grouping = row.at(7, 0);
  scheme.relations = row.at(8, 0);
  scheme.stored = row.at(9, 0);
  scheme.deleted = variant::spliced(row.at(10, 0)) == "0";
  return scheme;
}

std::vector<SchemeTitle> listSchemes(Page& page) {
  const Variant rows = frame::execSQLRows(page,
                                          "select Query_ID,Query_Name from Zembra_Query_Main"
                                          " where Zembra_Flag <> 0 order by Query_ID");
  std::vector<SchemeTitle> titles;
  if (!rows.isArray()) return titles;
  const Array& cells = rows.array();
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    titles.push_back({variant::toInt32(cells.at(0, row)), variant::spliced(cells.at(1, row))});
  }
  return titles;
}

std::string_view variantName(const Scheme& scheme) {
  return compile::operationFor(definitionOf(scheme));
}

Variant compileScheme(Page& page, const Scheme& scheme) {
  return compile::compileDefinition(page, definitionOf(scheme));
}

}  // namespace tarlo::scheme
