#include "siblings/csv_field.h"

#include "siblings/grid_rows.h"
#include "text/csv.h"
#include "variant/convert.h"

namespace tarlo::siblings {

std::string csvText(const Variant& value) {
  std::string text = shownText(value);
  if (text::looksLikeFormula(text) && !variant::isNumeric(value)) text.insert(text.begin(), '\'');
  return text;
}

std::string csvRecord(const std::vector<std::string>& fields) {
  std::string record;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) record += ',';
    record += text::csvQuoted(field);
  }
  return record + "\r\n";
}

}  // namespace tarlo::siblings
