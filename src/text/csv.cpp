#include "text/csv.h"

#include <algorithm>

namespace tarlo::text {
namespace {

// UTF-8: the blanks of ASCII, the one that does not break, the full-width one.
constexpr std::string_view kBlanks[] = {" ",  "\t", "\r",       "\n",
                                        "\v", "\f", "\xC2\xA0", "\xE3\x80\x80"};
constexpr std::string_view kStarts[] = {"=", "+", "-", "@", "＝", "＋", "－", "＠"};

template <class List>
const std::string_view* startIn(const List& list, std::string_view text) {
  const auto* found =
      std::ranges::find_if(list, [&](std::string_view each) { return text.starts_with(each); });
  return found == std::end(list) ? nullptr : found;
}

}  // namespace

std::string csvInQuotes(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  quoted += '"';
  return quoted;
}

std::string csvQuoted(std::string_view text) {
  const bool isPlain = text.find_first_of(",\"\r\n") == std::string_view::npos;
  return isPlain ? std::string(text) : csvInQuotes(text);
}

std::string csvRecord(const std::vector<std::string>& fields) {
  std::string record;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) record += ',';
    record += fields[i];
  }
  return record + "\r\n";
}

bool looksLikeFormula(std::string_view text) {
  if (text.starts_with('\t') || text.starts_with('\r')) return true;
  while (const std::string_view* blank = startIn(kBlanks, text)) text.remove_prefix(blank->size());
  return startIn(kStarts, text) != nullptr;
}

}  // namespace tarlo::text
