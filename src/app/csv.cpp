#include "app/csv.h"

#include "variant/convert.h"

namespace tarlo::app {

std::string csvField(std::string_view text) {
  if (!text.empty() && text.find_first_of(",\"\r\n") == std::string_view::npos) {
    return std::string(text);
  }
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  quoted += '"';
  return quoted;
}

std::string csvField(const Variant& value) {
  if (value.isNull()) return {};
  return csvField(std::string_view(variant::toText(value)));
}

}  // namespace tarlo::app
