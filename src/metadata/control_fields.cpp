// What a scheme offers to controls: its fields, the controls on it, and which of its columns are
// calculated.

#include "frame/data.h"
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

using frame::Row;
using frame::Rows;
using text::joined;
using variant::spliced;

constexpr std::ptrdiff_t kColumns = 5;

Array tableOf(std::size_t rows) {
  return Array({kColumns, static_cast<std::ptrdiff_t>(rows)});
}

// Id, display name and kind of the field.
Rows fieldWhere(Page& page, std::string_view condition) {
  return frame::rows(page, joined({"select a.Zembra_ID,a.DDF_CName,a.DDF_Type from "
                                   "Zembra_DataDict_Field as a,Zembra_DataDict_Table as b where ",
                                   condition}));
}

Variant plainFields(Page& page, std::string_view scheme, std::string_view table, Version version) {
  const auto columns = columnNames(page, scheme, version);
  if (!columns) return -1;
  std::string list;
  for (const QualifiedName& name : *columns) {
    if (text::trim(name.table) != text::trim(table)) continue;
    list += joined({list.empty() ? "" : ";", name.table, ".", name.column});
  }
  const auto items = text::split(list, ";");
  Array fields = tableOf(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto names = text::split(items[i], ".");
    const Rows found =
        fieldWhere(page, joined({"a.DDF_Name = '", pieceOf(names, 1), "' and b.DDT_Name = '",
                                 pieceOf(names, 0), "' and a.DDF_TableID = b.Zembra_ID"}));
    if (found.empty()) continue;
    const auto row = static_cast<std::ptrdiff_t>(i) + 1;
    for (std::size_t column = 0; column < 3; ++column) {
      fields.at(static_cast<std::ptrdiff_t>(column) + 1, row) = found.front().value(column);
    }
    fields.at(4, row) = "";
    fields.at(5, row) = "";
  }
  return fields;
}

std::string controlsFrom(Version version) {
  return version == Version::Frozen ? "select Zembra_ID,QF_Name from Zembra_Query_Field_Ver2"
                                    : "select QF_ID,QF_Name from Zembra_Query_Field";
}

// Fields that the scheme's controls of the kind are bound to.
Variant boundFields(Page& page, std::string_view scheme, std::string_view kind, Version version) {
  const Rows controls =
      frame::rows(page, joined({controlsFrom(version), " where QF_NameID = ", scheme,
                                " and  QF_FieldType  =  ", kind, " and Zembra_Flag <> 0"}));
  if (controls.empty()) return -1;
  std::string list;
  for (Row control : controls) {
    const BoundTo bound = boundTo(page, control.text(0), version);
    const std::string field = bound.isKnown ? bound.field.value_or("0") : "-1";
    const Rows found =
        fieldWhere(page, joined({"a.Zembra_ID = ", field, " and a.DDF_TableID = b.Zembra_ID"}));
    if (found.empty()) continue;
    const Row row = found.front();
    list += joined({list.empty() ? "" : ";", row.text(0), ",", row.text(1), ",", row.text(2), ",",
                    control.text(0), ",", control.text(1)});
  }
  const auto items = text::split(list, ";");
  Array fields = tableOf(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto parts = text::split(items[i], ",");
    for (std::ptrdiff_t column = 1; column <= kColumns; ++column) {
      fields.at(column, static_cast<std::ptrdiff_t>(i) + 1) =
          pieceOf(parts, static_cast<std::size_t>(column) - 1);
    }
  }
  return fields;
}

Variant listControls(Page& page, std::string_view scheme, Version version) {
  const Rows controls = frame::rows(
      page, joined({controlsFrom(version), " where QF_FieldType=3 and QF_NameID=", scheme,
                    " and Zembra_Flag <> 0"}));
  if (controls.empty()) return -1;
  Array fields = tableOf(controls.size());
  std::ptrdiff_t row = 0;
  for (Row control : controls) {
    ++row;
    for (std::ptrdiff_t column = 1; column <= 3; ++column) fields.at(column, row) = "";
    fields.at(4, row) = control.value(0);
    fields.at(5, row) = control.value(1);
  }
  return fields;
}

// Pair array of the chosen items: index from 0, and title.
struct Item {
  std::size_t index;
  std::string title;
};
Variant pairsOf(const std::vector<Item>& items) {
  if (items.empty()) return -1;
  Array pairs({2, static_cast<std::ptrdiff_t>(items.size())});
  std::ptrdiff_t row = 0;
  for (const Item& item : items) {
    pairs.at(1, ++row) = static_cast<std::int32_t>(item.index);
    pairs.at(2, row) = item.title;
  }
  return pairs;
}

std::vector<std::string_view> listItems(std::string_view statement) {
  std::string_view list = statement.substr(0, statement.find(" from "));
  constexpr std::string_view kSelect = "select ";
  if (list.starts_with(kSelect)) list.remove_prefix(kSelect.size());
  return text::split(list, ",");
}

bool isDictionaryField(Page& page, std::string_view qualified) {
  const auto names = text::split(qualified, ".");
  if (names.size() != 2) return false;
  return !frame::rows(page,
                      joined({"select b.Zembra_ID from Zembra_DataDict_Table as a , "
                              "Zembra_DataDict_Field as b , Zembra_Dict_FieldType as c  where "
                              "c.Zembra_ID in (3 , 5 , 7) and a.DDT_Name='",
                              withoutBrackets(names[0]), "' and b.DDF_Name='",
                              withoutBrackets(names[1]), "' and b.DDF_TableID=a.Zembra_ID"}))
              .empty();
}

bool isCalculated(std::string_view expression) {
  for (const std::string_view mark :
       {"+", "-", "*", "/", "%", "GETDATE()", "ABS(", "FLOOR(", "CEILING(", "YEAR(", "MONTH(",
        "DAY(", "HOUR(", "MINUTE(", "SECOND("}) {
    if (expression.find(mark) != std::string_view::npos) return true;
  }
  return false;
}

}  // namespace

Variant getQueryFields(Page& page, const Variant& queryid, const Variant& tablename,
                       const Variant& controlType, const Variant& isInstance) {
  const std::string given = spliced(tablename);
  const std::string kind = spliced(controlType);
  if (kind.empty()) {
    const std::string_view trimmed = text::trim(given);
    return plainFields(page, spliced(queryid),
                       trimmed.starts_with('[') ? withoutBrackets(trimmed) : given,
                       versionOf(isInstance));
  }
  if (kind == "1" || kind == "2")
    return boundFields(page, spliced(queryid), kind, versionOf(isInstance));
  return kind == "3" ? listControls(page, spliced(queryid), versionOf(isInstance)) : Variant();
}

Variant getQueryField(Page&, const Variant& sql) {
  const std::string statement = variant::toText(sql);
  std::vector<QualifiedName> names;
  for (std::string_view item : listItems(statement)) {
    names.push_back(qualifiedName(pieceOf(text::split(item, " as "), 0)));
  }
  return pairArray(names);
}

Variant getCalFieldOrder(Page& page, const Variant& controlid, const Variant&) {
  ErrorState errors;
  std::string control;
  if (!errors.run([&] { control = spliced(controlid); })) return -1;
  const FormControl list =
      formControl(page, control, static_cast<int>(ControlKind::List), Version::Frozen);
  if (list.answer != FormControl::Answer::Given) return -1;
  const std::string definition = withPart(list.definition.statement, list.definition.rest);
  std::vector<Item> chosen;
  const auto items = listItems(definition);
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto parts = text::split(items[i], " as ");
    if (parts.size() < 2) continue;
    bool isField = false;
    // The outer brackets of the whole go first. A compiled column, [table].[column], is no name of
    // the dictionary any more then, so only bare names give something: deliberate.
    errors.run([&] { isField = isDictionaryField(page, withoutBrackets(parts[0])); });
    if (isField) chosen.push_back({i, std::string(parts[1])});
  }
  return pairsOf(chosen);
}

Variant getVirtualFields(Page& page, const Variant& queryid, const Variant& isInstance) {
  ErrorState errors;
  using Texts = std::optional<std::vector<std::string>>;
  const auto ask = [&](Texts (*of)(Page&, std::string_view, Version)) {
    return errors.value([&] { return of(page, spliced(queryid), versionOf(isInstance)); });
  };
  const Texts expressions = ask(columnExpressions);
  const Texts titles = ask(columnTitles);
  if (!expressions || !titles) return -1;
  std::vector<Item> chosen;
  for (std::size_t n = 0; n < expressions->size(); ++n) {
    if (!isCalculated((*expressions)[n])) continue;
    chosen.push_back({n, n < titles->size() ? (*titles)[n] : ""});
  }
  return pairsOf(chosen);
}

}  // namespace tarlo::metadata
