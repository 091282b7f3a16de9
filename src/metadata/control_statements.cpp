#include "metadata/control_statements.h"

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/dictionary_lookups.h"
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

constexpr int kDropDown = 1;
constexpr int kCascade = 2;
constexpr int kList = 3;

std::vector<std::string_view> partsOf(const std::string& definition) {
  return text::split(definition, kListMark);
}

Variant column(std::string_view table, std::string_view name) {
  return joined({"[", table, "].[", name, "]"});
}

// A list's statement is tried before it is given out. One that fails stays Empty: what would repair
// it tries a join whose condition has nothing behind its equals sign, which no database runs.
Variant listStatement(Page& page, const std::string& definition) {
  ErrorState errors;
  const auto parts = partsOf(definition);
  Variant statement(parts.empty() ? std::string() : std::string(parts[0]));
  const std::string whole =
      joined({spliced(statement), kListMark, parts.size() > 1 ? parts[1] : ""});
  errors.run([&] {
    frame::asDesigner(page, [&] { frame::execSQLLogged(page, statement, frame::kCommandText); });
  });
  return errors.failed() ? Variant() : Variant(whole);
}

}  // namespace

Variant getControlSQL1(Page& page, const Variant& controlid, const Variant& isInstance) {
  const Variant row = controlRow(page, controlid, isInstance);
  if (!row.isArray() || !variant::equals(row.array().at(1, 0), kDropDown)) return variant::Null{};
  return row.array().at(0, 0);
}

Variant getControlSQL(Page& page, const Variant& controlid, const Variant& i,
                      const Variant& isInstance) {
  ErrorState errors;
  const Variant row = errors.value([&] { return controlRow(page, controlid, isInstance); });
  if (!row.isArray()) return -1;
  const std::string definition = spliced(row.array().at(0, 0));
  if (variant::equals(i, kList)) return listStatement(page, definition);
  const Variant& kind = row.array().at(1, 0);
  if (!variant::equals(i, kind)) return -2;
  if (variant::equals(kind, kDropDown)) return definition.substr(0, definition.find(kListMark));
  return errors.value([&] {
    const auto parts = partsOf(definition);
    return Variant(joined({pieceOf(parts, 0), kListMark, pieceOf(parts, 1)}));
  });
}

Variant Control2Fieldid(Page& page, const Variant& controlid, const Variant& isInstance) {
  ErrorState errors;
  const Variant row = errors.value([&] {
    return controlRow(page, controlid, isInstance, "QF_Relation,QF_FieldType,QF_NameID");
  });
  if (!row.isArray()) return -1;
  const Variant& kind = row.array().at(1, 0);
  const std::string definition = spliced(row.array().at(0, 0));
  const auto parts = partsOf(definition);
  for (const int bound : {kDropDown, kCascade}) {
    const auto place = static_cast<std::size_t>(bound);
    if (variant::equals(kind, bound) && parts.size() > place) return std::string(parts[place]);
  }
  return 0;
}

Variant Control2Field(Page& page, const Variant& controlid, const Variant& isInstance) {
  const Variant id = Control2Fieldid(page, controlid, isInstance);
  if (variant::equalsAsText(id, "-1")) return -1;
  const Variant field = getFieldName_Query(page, id);
  if (!field.isArray()) return -1;
  return column(spliced(field.array().at(0, 0)), spliced(field.array().at(2, 0)));
}

Variant getQueryKeyField(Page& page, const Variant& queryid, const Variant& isInstance) {
  ErrorState errors;
  const Variant keys = errors.value([&] { return keyRow(page, queryid, isInstance); });
  if (!keys.isArray() || variant::equalsAsText(keys.array().at(0, 0), "0")) return -1;
  const Variant names = errors.value([&] {
    return rowsOrNull(page,
                      joined({"select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Field as "
                              "b,Zembra_DataDict_Table as a where b.Zembra_ID = ",
                              spliced(keys.array().at(0, 0)), " and b.DDF_TableID = a.Zembra_ID"}));
  });
  if (!names.isArray()) return -1;
  return column(spliced(names.array().at(0, 0)), spliced(names.array().at(1, 0)));
}

Variant GetQuerySelRel(Page& page, const Variant& queryid, const Variant& isInstance) {
  const Variant rows = versionedRows(
      page, isInstance, "SELECT Query_MultiRelSel FROM Zembra_Query_Ver2 where Zembra_ID=",
      "SELECT Query_MultiRelSel FROM Zembra_Query_Main where Query_ID=", queryid);
  return rows.isArray() ? rows.array().at(0, 0) : Variant(-1);
}

}  // namespace tarlo::metadata
