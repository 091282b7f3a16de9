#include "metadata/control_fields.h"

#include "metadata/control_statements.h"
#include "metadata/introspection.h"
#include "metadata/select_list.h"
#include "metadata/statement_text.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using variant::spliced;

constexpr std::ptrdiff_t kColumns = 5;

Array tableOf(std::size_t rows) {
  return Array({kColumns, static_cast<std::ptrdiff_t>(rows)});
}

// Id, display name and kind of the field in columns 1 to 3.
Variant fieldWhere(Page& page, std::string_view condition) {
  return rowsOrNull(page, joined({"select a.Zembra_ID,a.DDF_CName,a.DDF_Type from "
                                  "Zembra_DataDict_Field as a,Zembra_DataDict_Table as b where ",
                                  condition}));
}

Variant plainFields(Page& page, const Variant& queryid, std::string_view table,
                    const Variant& isInstance) {
  const Variant columns = getQueryAllField(page, queryid, isInstance);
  if (!columns.isArray()) return -1;
  const Array& pairs = columns.array();
  std::string list;
  for (std::ptrdiff_t row = 0; row <= pairs.upperBound(2); ++row) {
    const std::string owner = spliced(pairs.at(1, row));
    if (text::trim(owner) != text::trim(table)) continue;
    list += joined({list.empty() ? "" : ";", owner, ".", spliced(pairs.at(2, row))});
  }
  const auto items = text::split(list, ";");
  Array fields = tableOf(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto names = text::split(items[i], ".");
    const Variant found =
        fieldWhere(page, joined({"a.DDF_Name = '", pieceOf(names, 1), "' and b.DDT_Name = '",
                                 pieceOf(names, 0), "' and a.DDF_TableID = b.Zembra_ID"}));
    if (!found.isArray()) continue;
    const auto row = static_cast<std::ptrdiff_t>(i) + 1;
    for (std::ptrdiff_t column = 0; column < 3; ++column) {
      fields.at(column + 1, row) = found.array().at(column, 0);
    }
    fields.at(4, row) = "";
    fields.at(5, row) = "";
  }
  return fields;
}

// The scheme's controls of the kind: id and name.
Variant controlsOf(Page& page, const Variant& queryid, const Variant& kind,
                   const Variant& isInstance) {
  const bool isVersion = variant::equals(isInstance, true);
  return rowsOrNull(page,
                    joined({isVersion ? "select Zembra_ID,QF_Name from Zembra_Query_Field_Ver2"
                                      : "select QF_ID,QF_Name from Zembra_Query_Field",
                            " where QF_NameID = ", spliced(queryid),
                            " and  QF_FieldType  =  ", spliced(kind), " and Zembra_Flag <> 0"}));
}

Variant boundFields(Page& page, const Array& controls, const Variant& isInstance) {
  std::string list;
  for (std::ptrdiff_t row = 0; row <= controls.upperBound(2); ++row) {
    const Variant& control = controls.at(0, row);
    const Variant field = Control2Fieldid(page, control, isInstance);
    const Variant found = fieldWhere(
        page, joined({"a.Zembra_ID = ", spliced(field), " and a.DDF_TableID = b.Zembra_ID"}));
    if (!found.isArray()) continue;
    const auto cell = [&](std::ptrdiff_t column) { return spliced(found.array().at(column, 0)); };
    list += joined({list.empty() ? "" : ";", cell(0), ",", cell(1), ",", cell(2), ",",
                    spliced(control), ",", spliced(controls.at(1, row))});
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

Variant listControls(const Array& controls) {
  const auto count = static_cast<std::size_t>(controls.upperBound(2) + 1);
  Array fields = tableOf(count);
  for (std::ptrdiff_t row = 1; row <= controls.upperBound(2) + 1; ++row) {
    for (std::ptrdiff_t column = 1; column <= 3; ++column) fields.at(column, row) = "";
    fields.at(4, row) = controls.at(0, row - 1);
    fields.at(5, row) = controls.at(1, row - 1);
  }
  return fields;
}

// Pair array of the chosen items: index from 0, and title.
struct Item {
  std::ptrdiff_t index;
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
  const Variant rows = rowsOrNull(
      page, joined({"select b.Zembra_ID from Zembra_DataDict_Table as a , Zembra_DataDict_Field as "
                    "b , Zembra_Dict_FieldType as c  where c.Zembra_ID in (3 , 5 , 7) and "
                    "a.DDT_Name='",
                    withoutBrackets(names[0]), "' and b.DDF_Name='", withoutBrackets(names[1]),
                    "' and b.DDF_TableID=a.Zembra_ID"}));
  return rows.isArray();
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
  if (spliced(controlType).empty()) {
    const std::string_view trimmed = text::trim(given);
    return plainFields(page, queryid, trimmed.starts_with('[') ? withoutBrackets(trimmed) : given,
                       isInstance);
  }
  const bool isBound =
      variant::equalsAsText(controlType, "1") || variant::equalsAsText(controlType, "2");
  if (!isBound && !variant::equalsAsText(controlType, "3")) return {};
  const Variant controls = controlsOf(page, queryid, controlType, isInstance);
  if (!controls.isArray()) return -1;
  return isBound ? boundFields(page, controls.array(), isInstance) : listControls(controls.array());
}

Variant getQueryField(Page&, const Variant& sql) {
  const std::string statement = variant::toText(sql);
  const auto items = listItems(statement);
  Array pairs({2, static_cast<std::ptrdiff_t>(items.size())});
  for (std::size_t i = 0; i < items.size(); ++i) {
    storePair(pairs, static_cast<std::ptrdiff_t>(i) + 1, pieceOf(text::split(items[i], " as "), 0));
  }
  return pairs;
}

Variant getCalFieldOrder(Page& page, const Variant& controlid, const Variant&) {
  const Variant definition = getControlSQL(page, controlid, 3, true);
  if (!definition.isText()) return -1;
  ErrorState errors;
  std::vector<Item> chosen;
  const auto items = listItems(definition.text());
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto parts = text::split(items[i], " as ");
    if (parts.size() < 2) continue;
    bool isField = false;
    // The outer brackets of the whole go first. A compiled column, [table].[column], is no name of
    // the dictionary any more then, so only bare names give something: deliberate.
    errors.run([&] { isField = isDictionaryField(page, withoutBrackets(parts[0])); });
    if (isField) chosen.push_back({static_cast<std::ptrdiff_t>(i), std::string(parts[1])});
  }
  return pairsOf(chosen);
}

Variant getVirtualFields(Page& page, const Variant& queryid, const Variant& isInstance) {
  ErrorState errors;
  const Variant expressions =
      errors.value([&] { return getQueryAllCal(page, queryid, isInstance); });
  const Variant titles = errors.value([&] { return getQueryAllTitle(page, queryid, isInstance); });
  if (!expressions.isArray() || !titles.isArray()) return -1;
  std::vector<Item> chosen;
  for (std::ptrdiff_t n = 1; n <= expressions.array().upperBound(); ++n) {
    if (!isCalculated(spliced(expressions.array().at(n)))) continue;
    const bool hasTitle = n <= titles.array().upperBound();
    chosen.push_back({n - 1, hasTitle ? spliced(titles.array().at(n)) : ""});
  }
  return pairsOf(chosen);
}

}  // namespace tarlo::metadata
