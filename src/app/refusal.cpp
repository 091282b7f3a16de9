#include "app/refusal.h"

#include <fmt/format.h>

#include <charconv>

namespace tarlo::app {
namespace {

// Takes `prefix` and the number behind it off the front.
bool takeNumber(std::string_view& text, std::string_view prefix, std::size_t& number) {
  if (!text.starts_with(prefix)) return false;
  const char* begin = text.data() + prefix.size();
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(begin, end, number);
  if (read.ec != std::errc()) return false;
  text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
  return true;
}

}  // namespace

std::optional<Refusal> parseRefusal(std::string_view description) {
  Refusal refusal;
  std::string_view rest = description;
  if (!takeNumber(rest, "line ", refusal.line)) return std::nullopt;
  if (!takeNumber(rest, ", column ", refusal.column)) return std::nullopt;
  if (!rest.starts_with(": ")) return std::nullopt;
  refusal.message = rest.substr(2);
  return refusal;
}

std::string placedInFile(std::string_view description, std::size_t firstLine) {
  if (const auto refusal = parseRefusal(description)) {
    return fmt::format("line {}, column {}: {}", firstLine + refusal->line - 1, refusal->column,
                       refusal->message);
  }
  return fmt::format("the batch at line {}: {}", firstLine, description);
}

std::string_view withoutPosition(std::string_view description) {
  const auto refusal = parseRefusal(description);
  return refusal ? refusal->message : description;
}

}  // namespace tarlo::app
