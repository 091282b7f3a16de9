// What a form asks of a control scheme at run time: the statement that fills it, and the field that
// it is bound to.

#include "frame/data.h"
#include "metadata/dictionary.h"
#include "metadata/operations.h"
#include "metadata/select_list.h"
#include "metadata/stored_controls.h"
#include "metadata/stored_rows.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using frame::Rows;
using text::joined;
using variant::spliced;

// A control as a caller names it; arguments that are no text name none.
struct Asked {
  bool isText = false;
  std::string control;
  Version version = Version::Current;
};
Asked askedFor(const Variant& controlid, const Variant& isInstance) {
  Asked asked;
  ErrorState errors;
  asked.isText = errors.run([&] {
    asked.version = versionOf(isInstance);
    asked.control = spliced(controlid);
  });
  return asked;
}

bool isOfKind(const Variant& cell, ControlKind kind) {
  return variant::equals(cell, static_cast<int>(kind));
}

}  // namespace

Variant getControlSQL1(Page& page, const Variant& controlid, const Variant& isInstance) {
  const Rows rows = controlRows(page, spliced(controlid), versionOf(isInstance),
                                "QF_Relation,QF_FieldType", " = ");
  if (rows.empty()) return variant::Null{};
  return isOfKind(rows.front().value(1), ControlKind::DropDown) ? rows.front().value(0)
                                                                : variant::Null{};
}

Variant getControlSQL(Page& page, const Variant& controlid, const Variant& i,
                      const Variant& isInstance) {
  const Asked asked = askedFor(controlid, isInstance);
  if (!asked.isText) return -1;
  const FormControl control = formControl(page, asked.control, i, asked.version);
  switch (control.answer) {
    case FormControl::Answer::Given:
      return control.isDropDown ? control.definition.statement
                                : withPart(control.definition.statement, control.definition.rest);
    case FormControl::Answer::Unknown:
      return -1;
    case FormControl::Answer::OtherKind:
      return -2;
    case FormControl::Answer::Refused:
      break;
  }
  return {};
}

Variant Control2Fieldid(Page& page, const Variant& controlid, const Variant& isInstance) {
  const Asked asked = askedFor(controlid, isInstance);
  if (!asked.isText) return -1;
  const BoundTo bound = boundTo(page, asked.control, asked.version);
  if (!bound.isKnown) return -1;
  return bound.field ? Variant(*bound.field) : Variant(0);
}

Variant Control2Field(Page& page, const Variant& controlid, const Variant& isInstance) {
  const Asked asked = askedFor(controlid, isInstance);
  if (!asked.isText) return -1;
  const BoundTo bound = boundTo(page, asked.control, asked.version);
  if (!bound.isKnown || bound.field == "-1") return -1;
  const auto field = fieldNames(page, bound.field.value_or("0"));
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
  if (!isOfKind(rows.front().value(1), ControlKind::List)) return -2;
  return errors.value([&] {
    const std::string definition = variant::toText(rows.front().value(0));
    return Variant(pieceOf(text::split(definition, text::kPartMark), 1));
  });
}

Variant verID2ZembraID(Page& page, const Variant& qfid, const Variant& queryid) {
  return frame::firstCell(page,
                          joined({"select Zembra_ID from Zembra_Query_Field_Ver2 where QF_ID=",
                                  spliced(qfid), " and QF_NameID=", spliced(queryid)}),
                          -1);
}

}  // namespace tarlo::metadata
