#include "tsql/lex/scan.h"

#include <cstring>

#include "text/fold.h"

namespace tarlo::tsql::scan {
namespace {

constexpr std::array<CharClass, 256> makeCharClasses() {
  std::array<CharClass, 256> classes{};
  for (const char c : std::string_view(" \t\n\r\f\v"))
    classes[static_cast<unsigned char>(c)] = CharClass::Blank;
  for (int c = 'a'; c <= 'z'; ++c) {
    classes[static_cast<std::size_t>(c)] = CharClass::NameStart;
    classes[static_cast<std::size_t>(text::raised(static_cast<char>(c)))] = CharClass::NameStart;
  }
  for (std::size_t c = 0x80; c < 256; ++c) classes[c] = CharClass::NameStart;
  for (const char c : std::string_view("_@#")) {
    classes[static_cast<unsigned char>(c)] = CharClass::NameStart;
  }
  classes[0xC2] = CharClass::NameLead;
  classes[0xE3] = CharClass::NameLead;
  classes['$'] = CharClass::NamePart;
  for (int c = '0'; c <= '9'; ++c) classes[static_cast<std::size_t>(c)] = CharClass::Digit;
  for (const char c : std::string_view("'\"[")) {
    classes[static_cast<unsigned char>(c)] = CharClass::Quote;
  }
  for (const char c : std::string_view("(),.;+-*/%&|^~=<>!")) {
    classes[static_cast<unsigned char>(c)] = CharClass::Operator;
  }
  return classes;
}

std::size_t digits(std::string_view rest, std::size_t from) {
  while (from < rest.size() && isDigit(rest[from])) ++from;
  return from;
}

bool isHexadecimalDigit(char c) {
  return text::hexDigit(c) >= 0;
}

Number hexadecimal(std::string_view rest) {
  std::size_t i = 2;
  while (i < rest.size() && isHexadecimalDigit(rest[i])) ++i;
  return {i == 2 ? 0 : i, ast::LiteralClass::Integer, true};
}

// Where the exponent that begins at `from` ends; `from` when there is none.
std::size_t exponent(std::string_view rest, std::size_t from) {
  if (from >= rest.size() || text::folded(rest[from]) != 'e') return from;
  std::size_t i = from + 1;
  if (i < rest.size() && (rest[i] == '+' || rest[i] == '-')) ++i;
  const std::size_t end = digits(rest, i);
  return end == i ? from : end;
}

}  // namespace

constinit const std::array<CharClass, 256> kCharClasses = makeCharClasses();

std::size_t nameLength(std::string_view rest) {
  std::size_t i = 0;
  for (; i < rest.size(); ++i) {
    const CharClass charClass = classOf(rest[i]);
    if (charClass == CharClass::NameStart) continue;
    if (charClass == CharClass::NameLead) {
      if (wideBlank(rest.substr(i)) != 0) break;
      continue;
    }
    const bool isPart = charClass == CharClass::Digit || charClass == CharClass::NamePart;
    if (i == 0 || !isPart) break;
  }
  return i;
}

Number number(std::string_view rest) {
  if (rest[0] == '0' && rest.size() > 1 && text::folded(rest[1]) == 'x') return hexadecimal(rest);
  Number result;
  std::size_t i = digits(rest, 0);
  if (i < rest.size() && rest[i] == '.') {
    i = digits(rest, i + 1);
    result.literalClass = ast::LiteralClass::Decimal;
  }
  result.length = exponent(rest, i);
  if (result.length != i) result.literalClass = ast::LiteralClass::Float;
  return result;
}

Quoted quoted(std::string_view rest, char closing) {
  Quoted result;
  std::size_t i = 1;
  while (i < rest.size()) {
    const void* found = std::memchr(rest.data() + i, closing, rest.size() - i);
    if (found == nullptr) return {};
    i = static_cast<std::size_t>(static_cast<const char*>(found) - rest.data()) + 1;
    if (i == rest.size() || rest[i] != closing) {
      result.length = i;
      return result;
    }
    result.hasDoubled = true;
    ++i;
  }
  return {};
}

std::size_t lineComment(std::string_view rest) {
  const std::size_t end = rest.find('\n');
  return end == std::string_view::npos ? rest.size() : end;
}

std::size_t blockComment(std::string_view rest) {
  std::size_t depth = 0;
  for (std::size_t i = 0; i + 1 < rest.size(); ++i) {
    if (rest[i] == '/' && rest[i + 1] == '*') {
      ++depth;
      ++i;
    } else if (rest[i] == '*' && rest[i + 1] == '/') {
      ++i;
      if (--depth == 0) return i + 1;
    }
  }
  return 0;
}

void appendUndoubled(std::string_view inside, char closing, std::string& out) {
  std::size_t at = 0;
  for (std::size_t found; (found = inside.find(closing, at)) != std::string_view::npos;) {
    out.append(inside, at, found + 1 - at);
    at = found + 2;
  }
  out.append(inside, at);
}

}  // namespace tarlo::tsql::scan
