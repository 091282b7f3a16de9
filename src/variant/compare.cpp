#include "variant/compare.h"

#include <algorithm>

#include "text/fold.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/number.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

bool isTextLike(const Variant& value) {
  return value.isText() || value.isEmpty();
}

std::string_view textOf(const Variant& value) {
  return value.isText() ? std::string_view(value.text()) : std::string_view();
}

// By UTF-16 unit: the order of UTF-8 bytes, but for characters beyond U+FFFF, whose units lie below
// U+E000 and the characters behind it.
std::weak_ordering orderTexts(std::string_view a, std::string_view b) {
  const auto [atA, atB] = std::ranges::mismatch(a, b);
  if (atA == a.end() || atB == b.end()) return a.size() <=> b.size();
  const auto byteA = static_cast<unsigned char>(*atA);
  const auto byteB = static_cast<unsigned char>(*atB);
  const bool pairA = byteA >= 0xF0;
  const bool pairB = byteB >= 0xF0;
  if (pairA != pairB && byteA >= 0xEE && byteB >= 0xEE) return pairB <=> pairA;
  return byteA <=> byteB;
}

// What text is worth against `other`: a number, or for a Boolean its name, or for a date its text.
std::optional<Number> valueAgainst(const Variant& text, State other) {
  if (other == State::Boolean) {
    const std::string_view word = text::trim(text.text());
    if (text::equalsNoCase(word, "True")) return std::int64_t{-1};
    if (text::equalsNoCase(word, "False")) return std::int64_t{0};
  }
  if (other == State::Date) {
    if (const auto time = text::readDate(text.text(), text::kValueDates)) {
      return linearMilliseconds(dateOf(*time));
    }
    return std::nullopt;
  }
  return parseNumber(text.text());
}

Number valueOf(const Variant& value, State other) {
  const bool againstDate = other == State::Date || other == State::Text;
  if (value.state() == State::Date && againstDate) return linearMilliseconds(value.date());
  return numberOf(value);
}

}  // namespace

std::optional<std::weak_ordering> compare(const Variant& left, const Variant& right) {
  if (left.isArray() || left.isObject() || right.isArray() || right.isObject()) {
    throw RuntimeError(ErrorNumber::TypeMismatch);
  }
  if (left.isNull() || right.isNull()) return std::nullopt;
  if (isTextLike(left) && isTextLike(right)) return orderTexts(textOf(left), textOf(right));
  if (left.isText()) {
    const auto value = valueAgainst(left, right.state());
    return value ? order(*value, valueOf(right, left.state())) : std::weak_ordering::greater;
  }
  if (right.isText()) {
    const auto value = valueAgainst(right, left.state());
    return value ? order(valueOf(left, right.state()), *value) : std::weak_ordering::less;
  }
  return order(valueOf(left, right.state()), valueOf(right, left.state()));
}

bool equals(const Variant& left, const Variant& right) {
  const std::optional<std::weak_ordering> result = compare(left, right);
  return result && *result == std::weak_ordering::equivalent;
}

bool equalsAsText(const Variant& left, const Variant& right) {
  if (left.isText() && right.isText()) return left.text() == right.text();
  return spliced(left) == spliced(right);
}

}  // namespace tarlo::variant
