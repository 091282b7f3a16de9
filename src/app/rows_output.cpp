#include "app/rows_output.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/json_value.h"
#include "text/csv.h"
#include "text/display_width.h"
#include "variant/convert.h"

namespace tarlo::app {
namespace {

std::vector<std::string> titlesOf(const database::Recordset& rows) {
  std::vector<std::string> titles;
  for (std::size_t i = 0; i < rows.fieldCount(); ++i) titles.push_back(rows.fieldName(i));
  return titles;
}

// Calls `write` for each row, stops when nobody reads any more, and gives the number of rows.
template <class Write>
std::size_t eachRow(const std::ostream& out, database::Recordset& rows, std::size_t maxRows,
                    Write&& write) {
  std::size_t count = 0;
  while (count < maxRows && !rows.atEnd() && out.good()) {
    write(count++);
    if (count < maxRows) rows.moveNext();
  }
  return count;
}

std::size_t writeTable(std::ostream& out, database::Recordset& rows, const RowLimits& limits) {
  Table table(out, titlesOf(rows), limits.width);
  const std::size_t count = eachRow(out, rows, limits.rows, [&](std::size_t) {
    std::vector<Cell> cells;
    for (std::size_t i = 0; i < rows.fieldCount(); ++i) cells.push_back(cellOf(rows.value(i)));
    table.add(std::move(cells));
  });
  table.finish();
  out << fmt::format("({} row{}", count, count == 1 ? "" : "s");
  if (table.columnsShown() < rows.fieldCount()) {
    out << fmt::format("; {} of {} columns fit", table.columnsShown(), rows.fieldCount());
  }
  out << ")\n";
  return count;
}

std::size_t writeJson(std::ostream& out, database::Recordset& rows, std::size_t maxRows) {
  out << "{\"columns\": " << jsonText(Json(titlesOf(rows))) << ", \"rows\": [";
  const std::size_t count = eachRow(out, rows, maxRows, [&](std::size_t row) {
    Json cells = Json::array();
    for (std::size_t i = 0; i < rows.fieldCount(); ++i) cells.push_back(toJson(rows.value(i)));
    out << (row == 0 ? "\n" : ",\n") << jsonText(cells);
  });
  out << (count == 0 ? "]}\n" : "\n]}\n");
  return count;
}

std::size_t writeCsv(std::ostream& out, database::Recordset& rows, std::size_t maxRows) {
  std::vector<std::string> fields = titlesOf(rows);
  std::ranges::transform(fields, fields.begin(), [](const auto& title) { return csvField(title); });
  out << text::csvRecord(fields);
  return eachRow(out, rows, maxRows, [&](std::size_t) {
    for (std::size_t i = 0; i < fields.size(); ++i) fields[i] = csvField(rows.value(i));
    out << text::csvRecord(fields);
  });
}

}  // namespace

Cell cellOf(const Variant& value) {
  if (value.isNull()) return {"NULL", false};
  return {text::visible(variant::toText(value)), value.isNumber()};
}

// What stands in the database goes out as it is, for programs that read it back: nothing is put in
// front of what a spreadsheet would run, as the lists' download does.
std::string csvField(const Variant& value) {
  if (value.isNull()) return {};
  const std::string text = variant::toText(value);
  return text.empty() ? text::csvInQuotes(text) : text::csvQuoted(text);
}

std::size_t writeRows(std::ostream& out, database::Recordset& rows, RowFormat format,
                      const RowLimits& limits) {
  switch (format) {
    case RowFormat::JsonText:
      return writeJson(out, rows, limits.rows);
    case RowFormat::Csv:
      return writeCsv(out, rows, limits.rows);
    default:
      return writeTable(out, rows, limits);
  }
}

}  // namespace tarlo::app
