#include "variant/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "text/utf8.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

struct Character {
  std::size_t bytes;
  std::size_t units;
};

// The character that begins at byte `i`; a byte that begins none is a character of one unit.
Character characterAt(std::string_view text, std::size_t i) {
  const std::size_t length = text::utf8Length(text.substr(i));
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

}  // namespace tarlo::variant
