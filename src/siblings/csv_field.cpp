#include "siblings/csv_field.h"

#include "siblings/grid_rows.h"
#include "variant/convert.h"
#include "variant/csv.h"

namespace tarlo::siblings {

std::string csvText(const Variant& value) {
  std::string text = shownText(value);
  if (variant::looksLikeFormula(text) && !variant::isNumeric(value))
    text.insert(text.begin(), '\'');
  return text;
}

std::string csvRecord(const std::vector<std::string>& fields) {
  std::string record;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) record += ',';
    record += variant::csvQuoted(field);
  }
  return record + "\r\n";
}

}  // namespace tarlo::siblings
