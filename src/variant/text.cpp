#include "variant/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "variant/runtime_error.h"
#include "variant/utf8.h"

namespace tarlo::variant {
namespace {

struct Character {
  std::size_t bytes;
  std::size_t units;
};

// The character that begins at byte `i`; a byte that begins none is a character of one unit.
Character characterAt(std::string_view text, std::size_t i) {
  const std::size_t length = utf8Length(text.substr(i));
  if (length == 4) return {4, 2};
  return {length == 0 ? 1 : length, 1};
}

// True when eight bytes from `i` are there and all ASCII: statements are mostly that.
bool eightAscii(std::string_view text, std::size_t i) {
  if (i + 8 > text.size()) return false;
  std::uint64_t word;
  std::memcpy(&word, text.data() + i, 8);
  return (word & 0x8080808080808080U) == 0;
}

// Where a unit count falls. On a character boundary `before` and `after` are the same byte offset;
// inside a pair they enclose the pair. `units` is the count at `after`.
struct Cut {
  std::size_t before;
  std::size_t after;
  std::size_t units;
};

Cut cutAt(std::string_view text, std::size_t units) {
  std::size_t byte = 0;
  std::size_t counted = 0;
  while (counted < units && byte < text.size()) {
    if (units - counted >= 8 && eightAscii(text, byte)) {
      byte += 8;
      counted += 8;
      continue;
    }
    const Character character = characterAt(text, byte);
    counted += character.units;
    if (counted > units) return {byte, byte + character.bytes, counted};
    byte += character.bytes;
  }
  return {byte, byte, counted};
}

std::size_t checkedLength(std::ptrdiff_t length) {
  if (length < 0) throw RuntimeError(ErrorNumber::InvalidCall);
  return static_cast<std::size_t>(length);
}

Cut checkedStart(std::string_view text, std::ptrdiff_t start) {
  if (start < 1) throw RuntimeError(ErrorNumber::InvalidCall);
  return cutAt(text, static_cast<std::size_t>(start) - 1);
}

char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::size_t len(std::string_view text) {
  return cutAt(text, SIZE_MAX).units;
}

std::string_view mid(std::string_view text, std::ptrdiff_t start) {
  return text.substr(checkedStart(text, start).after);
}

std::string_view mid(std::string_view text, std::ptrdiff_t start, std::ptrdiff_t length) {
  const Cut from = checkedStart(text, start);
  const std::size_t end = static_cast<std::size_t>(start) - 1 + checkedLength(length);
  const std::string_view rest = text.substr(from.after);
  if (end <= from.units) return rest.substr(0, 0);
  return rest.substr(0, cutAt(rest, end - from.units).before);
}

std::string_view left(std::string_view text, std::ptrdiff_t length) {
  return text.substr(0, cutAt(text, checkedLength(length)).before);
}

std::string_view right(std::string_view text, std::ptrdiff_t length) {
  const std::size_t wanted = checkedLength(length);
  const std::size_t total = len(text);
  return wanted >= total ? text : text.substr(cutAt(text, total - wanted).after);
}

std::size_t inStr(std::string_view text, std::string_view wanted, std::size_t start) {
  if (start < 1) throw RuntimeError(ErrorNumber::InvalidCall);
  const Cut from = cutAt(text, start - 1);
  if (text.empty() || from.units < start - 1) return 0;
  if (wanted.empty()) return from.after == text.size() ? 0 : start;
  const std::string_view rest = text.substr(from.after);
  const std::size_t found = rest.find(wanted);
  return found == std::string_view::npos ? 0 : from.units + len(rest.substr(0, found)) + 1;
}

std::string replace(std::string_view text, std::string_view wanted, std::string_view by) {
  std::string result;
  result.reserve(text.size());
  std::size_t from = 0;
  if (!wanted.empty()) {
    for (std::size_t found; (found = text.find(wanted, from)) != std::string_view::npos;) {
      result.append(text, from, found - from).append(by);
      from = found + wanted.size();
    }
  }
  return result.append(text, from);
}

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> pieces;
  if (text.empty()) return pieces;
  std::size_t from = 0;
  if (!separator.empty()) {
    for (std::size_t found; (found = text.find(separator, from)) != std::string_view::npos;) {
      pieces.push_back(text.substr(from, found - from));
      from = found + separator.size();
    }
  }
  pieces.push_back(text.substr(from));
  return pieces;
}

std::string join(const std::vector<std::string_view>& pieces, std::string_view separator) {
  std::string result;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) result.append(separator);
    result.append(pieces[i]);
  }
  return result;
}

std::string_view ltrim(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view rtrim(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trim(std::string_view text) {
  return ltrim(rtrim(text));
}

bool equalsNoCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, folded, folded);
}

std::string foldedName(std::string_view name) {
  std::string result(name);
  std::ranges::transform(result, result.begin(), folded);
  return result;
}

}  // namespace tarlo::variant
