#include "siblings/csv_field.h"

#include "siblings/grid_rows.h"
#include "variant/convert.h"
#include "variant/text.h"

namespace tarlo::siblings {

std::string csvText(const Variant& value) {
  std::string text = shownText(value);
  constexpr std::string_view kFormulaStarts = "=+-@\t\r";
  // Full-width forms count too: some spreadsheets fold them.
  constexpr std::string_view kWideStarts[] = {"＝", "＋", "－", "＠"};
  bool starts = !text.empty() && kFormulaStarts.find(text[0]) != std::string_view::npos;
  for (const std::string_view wide : kWideStarts) starts = starts || text.starts_with(wide);
  if (starts && !variant::isNumeric(value)) text.insert(text.begin(), '\'');
  return text;
}

std::string csvRecord(const std::vector<std::string>& fields) {
  std::string record;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) record += ',';
    if (field.find_first_of(",\"\r\n") == std::string::npos) {
      record += field;
    } else {
      record += '"' + variant::replace(field, "\"", "\"\"") + '"';
    }
  }
  return record + "\r\n";
}

}  // namespace tarlo::siblings
