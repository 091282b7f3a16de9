#include "variant/text.h"

#include "text/utf8.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

std::size_t checkedLength(std::ptrdiff_t length) {
  if (length < 0) throw RuntimeError(ErrorNumber::InvalidCall);
  return static_cast<std::size_t>(length);
}

text::Utf16Cut checkedStart(std::string_view text, std::ptrdiff_t start) {
  if (start < 1) throw RuntimeError(ErrorNumber::InvalidCall);
  return text::utf16Cut(text, static_cast<std::size_t>(start) - 1);
}

}  // namespace

std::size_t len(std::string_view text) {
  return text::utf16Length(text);
}

std::string_view mid(std::string_view text, std::ptrdiff_t start) {
  return text.substr(checkedStart(text, start).after);
}

std::string_view mid(std::string_view text, std::ptrdiff_t start, std::ptrdiff_t length) {
  const text::Utf16Cut from = checkedStart(text, start);
  const std::size_t end = static_cast<std::size_t>(start) - 1 + checkedLength(length);
  const std::string_view rest = text.substr(from.after);
  if (end <= from.units) return rest.substr(0, 0);
  return rest.substr(0, text::utf16Cut(rest, end - from.units).before);
}

std::string_view left(std::string_view text, std::ptrdiff_t length) {
  return text.substr(0, text::utf16Cut(text, checkedLength(length)).before);
}

std::string_view right(std::string_view text, std::ptrdiff_t length) {
  const std::size_t wanted = checkedLength(length);
  const std::size_t total = len(text);
  return wanted >= total ? text : text.substr(text::utf16Cut(text, total - wanted).after);
}

std::size_t inStr(std::string_view text, std::string_view wanted, std::size_t start) {
  if (start < 1) throw RuntimeError(ErrorNumber::InvalidCall);
  const text::Utf16Cut from = text::utf16Cut(text, start - 1);
  if (text.empty() || from.units < start - 1) return 0;
  if (wanted.empty()) return from.after == text.size() ? 0 : start;
  const std::string_view rest = text.substr(from.after);
  const std::size_t found = rest.find(wanted);
  return found == std::string_view::npos ? 0 : from.units + len(rest.substr(0, found)) + 1;
}

}  // namespace tarlo::variant
