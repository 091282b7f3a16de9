#include "app/csv.h"

#include "text/csv.h"
#include "variant/convert.h"

namespace tarlo::app {

std::string csvField(std::string_view text) {
  return text.empty() ? text::csvInQuotes(text) : text::csvQuoted(text);
}

std::string csvField(const Variant& value) {
  if (value.isNull()) return {};
  return csvField(std::string_view(variant::toText(value)));
}

}  // namespace tarlo::app
