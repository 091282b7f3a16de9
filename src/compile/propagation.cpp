// Keeping stored statements true to the dictionary: definitions hold ids, statements hold names, so
// a change of the dictionary asks for the statements to be compiled again.

#include "compile/definition.h"
#include "compile/operations.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "text/sql_text.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::compile {
namespace {

// One row of the schemes: id, computed fields, filter, statistics, grouping, relations.
bool updateScheme(Page& page, const std::string& mainTable, const frame::Row& scheme) {
  const Definition definition{mainTable,      scheme.text(1), scheme.text(2),
                              scheme.text(3), scheme.text(4), scheme.text(5)};
  ErrorState errors;
  std::string statement;
  errors.run([&] { statement = compileDefinition(page, definition); });
  errors.clear();
  errors.run([&] { frame::asDesigner(page, [&] { frame::execSQL(page, statement); }); });
  if (errors.failed()) return false;
  std::string update = "update Zembra_Query_Main set Query_Fields='" +
                       text::doubledQuotes(statement) + "',Zembra_ModiDate='" +
                       frame::currentDateTimeText() + "' where Query_ID=" + scheme.text(0);
  return errors.run([&] { frame::execSQLLogged(page, update); });
}

}  // namespace

Variant UpdateQuery(Page& page, const Variant& tableid) {
  ErrorState errors;
  std::string mainTable;
  errors.run([&] { mainTable = variant::spliced(tableid); });
  const frame::Rows rows = errors.value([&] {
    return frame::rows(page,
                       "select Query_ID,Query_Vir,Query_Rel,Query_Static,Query_Group,"
                       "Query_MultiRelSel from Zembra_Query_Main where Query_MainTBID=" +
                           mainTable);
  });
  bool outcome = false;
  for (frame::Row row : rows) outcome = updateScheme(page, mainTable, row);
  return outcome;
}

}  // namespace tarlo::compile
