#include "metadata/introspection.h"

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/select_list.h"
#include "metadata/statement_text.h"
#include "metadata/versioned_rows.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using variant::spliced;

constexpr int kTableControl = 3;  // QF_FieldType of a control that shows a table

// Null when there is no row.
Variant storedStatement(Page& page, const Variant& queryid, const Variant& isInstance) {
  const Variant rows =
      versionedRows(page, isInstance, "SELECT Query_Fields FROM Zembra_Query_Ver2 where Zembra_ID=",
                    "SELECT Query_Fields FROM Zembra_Query_Main where Query_ID=", queryid);
  return rows.isArray() ? rows.array().at(0, 0) : rows;
}

}  // namespace

Variant getQuerySQL(Page& page, const Variant& queryid, const Variant& isInstance) {
  ErrorState errors;
  Variant statement = variant::Null{};
  errors.run([&] { statement = storedStatement(page, queryid, isInstance); });
  return statement;
}

Variant getQueryAllTitle(Page& page, const Variant& queryid, const Variant& isInstance) {
  const Variant statement = storedStatement(page, queryid, isInstance);
  if (statement.isNull()) return statement;
  return frame::asDesigner(page, [&] { return frame::getSQLFieldNames(page, statement); });
}

Variant getQueryAllCal(Page& page, const Variant& queryid, const Variant& isInstance) {
  const Variant statement = storedStatement(page, queryid, isInstance);
  if (statement.isNull()) return statement;
  const std::string list = text::replace(selectListOf(variant::toText(statement)), "\r\n", "");
  return expressionsOf(list, getQueryAllTitle(page, queryid, isInstance));
}

Variant getQueryAllField(Page& page, const Variant& queryid, const Variant& isInstance) {
  const Variant statement = storedStatement(page, queryid, isInstance);
  if (statement.isNull()) return statement;
  return columnsOf(std::string(selectListOf(variant::toText(statement))),
                   getQueryAllTitle(page, queryid, isInstance));
}

Variant KeyField2TableID(Page& page, const Variant& queryid, const Variant& isInstance) {
  ErrorState errors;
  Variant keys;
  errors.run([&] { keys = keyRow(page, queryid, isInstance); });
  if (!keys.isArray()) return -1;
  Variant tables;
  errors.run([&] {
    tables =
        rowsOrNull(page, joined({"select DDF_TableID from Zembra_DataDict_Field where Zembra_ID=",
                                 spliced(keys.array().at(0, 0))}));
  });
  return tables.isArray() ? tables.array().at(0, 0) : Variant(-1);
}

Variant getTableListTitle(Page& page, const Variant& controlid, const Variant& isInstance) {
  ErrorState errors;
  Variant rows;
  errors.run([&] { rows = controlRow(page, controlid, isInstance, "QF_CField,QF_FieldType"); });
  if (!rows.isArray()) return -1;
  if (!variant::equals(rows.array().at(1, 0), kTableControl)) return -2;
  return errors.value([&] {
    const std::string definition = variant::toText(rows.array().at(0, 0));
    return Variant(pieceOf(text::split(definition, kListMark), 1));
  });
}

Variant SQL2Fields(Page&, const Variant& SQLstr) {
  return firstOperandsOf(variant::toText(SQLstr));
}

}  // namespace tarlo::metadata
