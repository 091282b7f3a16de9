#include "compile/propagation.h"

#include "compile/definition.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "text/sql_text.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::compile {
namespace {

using variant::spliced;

// One row of the schemes: id, computed fields, filter, statistics, grouping, relations.
bool updateScheme(Page& page, const Variant& tableid, const Array& schemes, std::ptrdiff_t row) {
  const Definition definition{tableid,
                              schemes.at(1, row),
                              schemes.at(2, row),
                              schemes.at(3, row),
                              schemes.at(4, row),
                              schemes.at(5, row)};
  ErrorState errors;
  Variant statement = "";
  errors.run([&] { statement = compileDefinition(page, definition); });
  errors.clear();
  errors.run([&] {
    frame::asDesigner(page, [&] { frame::execSQL(page, statement, frame::kCommandText); });
  });
  if (errors.failed()) return false;
  Variant update("update Zembra_Query_Main set Query_Fields='" +
                 text::doubledQuotes(spliced(statement)) + "',Zembra_ModiDate='" +
                 frame::currentDateTimeText() + "' where Query_ID=" + spliced(schemes.at(0, row)));
  return errors.run([&] { frame::execSQLLogged(page, update, frame::kCommandText); });
}

}  // namespace

Variant UpdateQuery(Page& page, const Variant& tableid) {
  ErrorState errors;
  const Variant rows = errors.value([&] {
    return frame::execSQLRows(page,
                              "select Query_ID,Query_Vir,Query_Rel,Query_Static,Query_Group,"
                              "Query_MultiRelSel from Zembra_Query_Main where Query_MainTBID=" +
                                  spliced(tableid));
  });
  bool outcome = false;
  if (!rows.isArray()) return outcome;
  for (std::ptrdiff_t row = 0; row <= rows.array().upperBound(2); ++row) {
    outcome = updateScheme(page, tableid, rows.array(), row);
  }
  return outcome;
}

}  // namespace tarlo::compile
