#include "control/posted_control.h"

#include "control/control_statement.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

// "table.field" as posted; what is missing is "".
struct Caption {
  std::string table;
  std::string field;
};

Caption captionOf(const std::vector<std::string_view>& captions, std::size_t index) {
  if (index >= captions.size()) return {};
  const auto parts = text::split(captions[index], ".");
  if (parts.size() < 2) return {};
  return {std::string(parts[0]), std::string(parts[1])};
}

}  // namespace

std::string posted(Page& page, std::string_view key) {
  return variant::spliced(page.request.value(key));
}

ControlColumns postedColumns(Page& page) {
  return {posted(page, "realField"), posted(page, "viewField")};
}

void describeColumns(Page& page, const ControlColumns& columns, ControlRow& row) {
  const std::string list = text::doubledQuotes(posted(page, "CField"));
  const auto captions = text::split(list, ",");
  const Caption value = captionOf(captions, 0);
  const Caption text = captionOf(captions, 1);
  describeTables(columns, row);
  row.captions = value.field + "," + text.field;
  const bool isOneTable = row.tableCaptions.empty();
  row.tableCaptions = isOneTable ? value.table : value.table + "," + text.table;
}

void describeTables(const ControlColumns& columns, ControlRow& row) {
  const std::string first = tablePart(columns.value);
  const std::string second = tablePart(columns.text);
  const bool isOneTable = first == second;
  row.tables = isOneTable ? second : first + "." + second;
  row.tableCaptions = isOneTable ? "" : ",";
}

std::string postedLevels(Page& page, std::string_view condition) {
  const std::string relating = posted(page, "relField1");
  const std::string values = posted(page, "relField2");
  const std::string texts = posted(page, "relField3");
  const auto first = text::split(relating, ",");
  const auto second = text::split(values, ",");
  const auto third = text::split(texts, ",");
  std::string levels;
  for (std::size_t i = 0; i < first.size() && i < second.size() && i < third.size(); ++i) {
    if (!levels.empty()) levels += ";";
    levels.append(tablePart(first[i])).append(",").append(first[i]).append(",");
    levels.append(second[i]).append(",").append(third[i]);
    if (!condition.empty()) levels.append(",").append(condition);
  }
  return levels;
}

std::string postedTitles(Page& page) {
  const std::string titles = text::replace(posted(page, "TitleField"), ",", "|");
  return text::replace(titles, "<", "");
}

std::vector<std::string> postedColumnNumbers(Page& page) {
  std::string list = text::replace(posted(page, "viewfield"), ",undefined,", ",");
  for (const std::string_view word : {",undefined", "undefined,", "undefined"}) {
    list = text::replace(list, word, "");
  }
  std::vector<std::string> numbers;
  for (const std::string_view number : text::split(list, ",")) numbers.emplace_back(number);
  return numbers;
}

}  // namespace tarlo::control
