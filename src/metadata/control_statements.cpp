// What a form asks of a control scheme at run time: the statement that fills it, and the field that
// it is bound to.

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/dictionary.h"
#include "metadata/operations.h"
#include "metadata/select_list.h"
#include "metadata/stored_rows.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using frame::Row;
using frame::Rows;
using text::joined;
using text::kPartMark;
using variant::spliced;

constexpr int kDropDown = 1;
constexpr int kCascade = 2;
constexpr int kList = 3;

Rows definitionRows(Page& page, const Variant& controlid, const Variant& isInstance) {
  return controlRows(page, spliced(controlid), versionOf(isInstance), "QF_Relation,QF_FieldType",
                     " = ");
}

// A list's statement is tried before it is given out. One that fails stays Empty: what would repair
// it tries a join whose condition has nothing behind its equals sign, which no database runs.
Variant listStatement(Page& page, const std::string& definition) {
  const auto parts = text::split(definition, kPartMark);
  std::string statement(parts.empty() ? "" : parts[0]);
  ErrorState errors;
  errors.run([&] { frame::asDesigner(page, [&] { frame::execSQLLogged(page, statement); }); });
  if (errors.failed()) return {};
  return joined({statement, kPartMark, parts.size() > 1 ? parts[1] : ""});
}

}  // namespace

Variant getControlSQL1(Page& page, const Variant& controlid, const Variant& isInstance) {
  const Rows rows = definitionRows(page, controlid, isInstance);
  if (rows.empty() || !variant::equals(rows.front().value(1), kDropDown)) return variant::Null{};
  return rows.front().value(0);
}

Variant getControlSQL(Page& page, const Variant& controlid, const Variant& i,
                      const Variant& isInstance) {
  ErrorState errors;
  const Rows rows = errors.value([&] { return definitionRows(page, controlid, isInstance); });
  if (rows.empty()) return -1;
  const std::string definition = rows.front().text(0);
  if (variant::equals(i, kList)) return listStatement(page, definition);
  const Variant& kind = rows.front().value(1);
  if (!variant::equals(i, kind)) return -2;
  if (variant::equals(kind, kDropDown)) return definition.substr(0, definition.find(kPartMark));
  return errors.value([&] {
    const auto parts = text::split(definition, kPartMark);
    return Variant(joined({pieceOf(parts, 0), kPartMark, pieceOf(parts, 1)}));
  });
}

Variant Control2Fieldid(Page& page, const Variant& controlid, const Variant& isInstance) {
  ErrorState errors;
  const Rows rows = errors.value([&] {
    return controlRows(page, spliced(controlid), versionOf(isInstance),
                       "QF_Relation,QF_FieldType,QF_NameID", "=");
  });
  if (rows.empty()) return -1;
  const std::string definition = rows.front().text(0);
  const auto parts = text::split(definition, kPartMark);
  for (const int bound : {kDropDown, kCascade}) {
    const auto place = static_cast<std::size_t>(bound);
    if (variant::equals(rows.front().value(1), bound) && parts.size() > place) {
      return std::string(parts[place]);
    }
  }
  return 0;
}

Variant Control2Field(Page& page, const Variant& controlid, const Variant& isInstance) {
  const Variant id = Control2Fieldid(page, controlid, isInstance);
  if (variant::equalsAsText(id, "-1")) return -1;
  const auto field = fieldNames(page, spliced(id));
  if (!field) return -1;
  return joined({"[", field->table, "].[", field->column, "]"});
}

Variant getTableListTitle(Page& page, const Variant& controlid, const Variant& isInstance) {
  ErrorState errors;
  const Rows rows = errors.value([&] {
    return controlRows(page, spliced(controlid), versionOf(isInstance), "QF_CField,QF_FieldType",
                       "=");
  });
  if (rows.empty()) return -1;
  if (!variant::equals(rows.front().value(1), kList)) return -2;
  return errors.value([&] {
    const std::string definition = variant::toText(rows.front().value(0));
    return Variant(pieceOf(text::split(definition, kPartMark), 1));
  });
}

Variant verID2ZembraID(Page& page, const Variant& qfid, const Variant& queryid) {
  return frame::firstCell(page,
                          joined({"select Zembra_ID from Zembra_Query_Field_Ver2 where QF_ID=",
                                  spliced(qfid), " and QF_NameID=", spliced(queryid)}),
                          -1);
}

}  // namespace tarlo::metadata
