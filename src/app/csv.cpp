#include "app/csv.h"

#include "variant/convert.h"
#include "variant/csv.h"

namespace tarlo::app {

std::string csvField(std::string_view text) {
  return text.empty() ? variant::csvInQuotes(text) : variant::csvQuoted(text);
}

std::string csvField(const Variant& value) {
  if (value.isNull()) return {};
  return csvField(std::string_view(variant::toText(value)));
}

}  // namespace tarlo::app
