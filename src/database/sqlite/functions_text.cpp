// Texts cut, joined and cased. Positions and lengths count UTF-16 units.

#include <algorithm>

#include "database/sqlite/function_call.h"
#include "database/sqlite/text_fold.h"
#include "text/pieces.h"
#include "variant/text.h"

namespace tarlo::database {
namespace {

// What a text of the server without MAX holds.
constexpr std::int64_t kMostUnits = 8000;
constexpr std::int64_t kMostPosition = std::int64_t{1} << 40;

std::int64_t lengthOf(std::string_view text) {
  return static_cast<std::int64_t>(variant::len(text));
}

// A position or a count, kept so small that sums of two cannot overflow.
std::int64_t bounded(const FunctionCall& call, int i) {
  return std::clamp(call.integer(i), -kMostPosition, kMostPosition);
}

std::int64_t count(const FunctionCall& call, int i, const char* function) {
  const std::int64_t value = bounded(call, i);
  if (value < 0) throw FunctionError(std::string("negative length for ") + function);
  return value;
}

void len(FunctionCall& call) {
  call.give(lengthOf(text::rtrim(call.text(0))));
}
void dataLength(FunctionCall& call) {
  call.give(2 * lengthOf(call.text(0)));
}

// A start below 1 uses up length: SUBSTRING('abc', 0, 2) is 'a'.
void substring(FunctionCall& call) {
  const std::int64_t end = bounded(call, 1) + count(call, 2, "SUBSTRING");
  const std::int64_t start = std::max<std::int64_t>(bounded(call, 1), 1);
  if (end <= start) return call.give(std::string_view());
  call.give(variant::mid(call.text(0), start, end - start));
}

void left(FunctionCall& call) {
  call.give(variant::left(call.text(0), count(call, 1, "LEFT")));
}
void right(FunctionCall& call) {
  call.give(variant::right(call.text(0), count(call, 1, "RIGHT")));
}

void cased(FunctionCall& call, char32_t (*convert)(char32_t)) {
  const std::string_view text = call.text(0);
  std::u32string characters;
  characters.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    characters.push_back(convert(decodeCharacter(text, at)));
  }
  call.give(std::string_view(encodeText(characters)));
}

void upper(FunctionCall& call) {
  cased(call, upperCharacter);
}
void lower(FunctionCall& call) {
  cased(call, lowerCharacter);
}

void repeat(FunctionCall& call, std::string_view text, std::int64_t times) {
  if (times < 0) return call.giveNull();
  const std::int64_t units = std::max<std::int64_t>(lengthOf(text), 1);
  // A result beyond the bound is cut there, as the server does.
  const std::int64_t needed = std::min(times, kMostUnits / units + 1);
  std::string result;
  for (std::int64_t i = 0; i < needed && !text.empty(); ++i) result += text;
  call.give(variant::left(result, kMostUnits));
}

void replicate(FunctionCall& call) {
  repeat(call, call.text(0), call.integer(1));
}
void space(FunctionCall& call) {
  repeat(call, " ", call.integer(0));
}

void stuff(FunctionCall& call) {
  const std::string_view text = call.text(0);
  const std::int64_t start = bounded(call, 1);
  const std::int64_t length = bounded(call, 2);
  if (start < 1 || start > lengthOf(text) || length < 0) return call.giveNull();
  std::string result(variant::left(text, start - 1));
  result += call.text(3);
  result += variant::mid(text, start + length);
  call.give(std::string_view(result));
}

void reverse(FunctionCall& call) {
  const std::string_view text = call.text(0);
  std::u32string characters;
  for (std::size_t at = 0; at < text.size();) characters.push_back(decodeCharacter(text, at));
  std::reverse(characters.begin(), characters.end());
  call.give(std::string_view(encodeText(characters)));
}

// The number of the first character. Beyond ASCII it is the code point, not a byte of a code page.
void ascii(FunctionCall& call) {
  const std::string_view text = call.text(0);
  if (text.empty()) return call.giveNull();
  std::size_t at = 0;
  call.give(static_cast<std::int64_t>(decodeCharacter(text, at)));
}

void character(FunctionCall& call) {
  const std::int64_t code = call.integer(0);
  if (code < 0 || code > 255) return call.giveNull();
  call.give(std::string_view(encodeText(std::u32string(1, static_cast<char32_t>(code)))));
}

// tsql_fit(text, length, column): what a column of that length takes; only blanks are cut.
void fit(FunctionCall& call) {
  const std::string_view text = call.text(0);
  const std::int64_t most = call.integer(1);
  if (lengthOf(text) <= most) return call.giveSame(0);
  if (lengthOf(text::rtrim(text)) > most) {
    throw FunctionError("text would be truncated in column " + std::string(call.text(2)));
  }
  call.give(variant::left(text, most));
}

// tsql_pad(text, length): char(n) holds n units.
void pad(FunctionCall& call) {
  const std::int64_t width = call.integer(1);
  std::string text(variant::left(call.text(0), width));
  text.append(static_cast<std::size_t>(std::max<std::int64_t>(width - lengthOf(text), 0)), ' ');
  call.give(std::string_view(text));
}

constexpr FunctionRow kTextFunctions[] = {
    {"tsql_len", 1, len},
    {"tsql_datalength", 1, dataLength},
    {"tsql_substring", 3, substring},
    {"tsql_left", 2, left},
    {"tsql_right", 2, right},
    {"tsql_upper", 1, upper},
    {"tsql_lower", 1, lower},
    {"tsql_replicate", 2, replicate},
    {"tsql_space", 1, space},
    {"tsql_stuff", 4, stuff},
    {"tsql_reverse", 1, reverse},
    {"tsql_ascii", 1, ascii},
    {"tsql_char", 1, character},
    {"tsql_fit", 3, fit},
    {"tsql_pad", 2, pad},
};

}  // namespace

std::span<const FunctionRow> textFunctions() {
  return kTextFunctions;
}

}  // namespace tarlo::database
