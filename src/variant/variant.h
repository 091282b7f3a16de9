#pragma once
// The value that every operation takes and returns. The platform's pages were written against
// late-bound variants, and many of their rules hang on the difference between Empty, Null and "",
// so the states are explicit here. Conversions and comparisons are those of the pages' language:
// see convert.h and compare.h.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace tarlo::variant {

class Array;
class Object;

enum class State : std::uint8_t {
  Empty,
  Null,
  Text,
  Int16,
  Int32,
  Int64,
  Double,
  Decimal,
  Boolean,
  Date,
  Array,
  Object
};

struct Null {
  bool operator==(const Null&) const = default;
};

// Exact decimal number as text: optional "-", digits, optional "." and digits; no exponent, no
// trailing zeros behind the point, no "+" sign.
struct Decimal {
  std::string digits;
  bool operator==(const Decimal&) const = default;
};

// Days since 1899-12-30 00:00:00, the fraction being the time of the day (an OLE automation date).
// No time zone.
struct Date {
  double days = 0;
  bool operator==(const Date&) const = default;
};

class Variant {
 public:
  Variant() = default;  // Empty
  Variant(Null) : value_(Null{}) {}
  Variant(std::string text) : value_(std::move(text)) {}
  Variant(std::string_view text) : value_(std::string(text)) {}
  Variant(const char* text) : value_(std::string(text)) {}
  Variant(std::int16_t number) : value_(number) {}
  Variant(std::int32_t number) : value_(number) {}
  Variant(std::int64_t number) : value_(number) {}
  Variant(double number) : value_(number) {}
  Variant(bool truth) : value_(truth) {}
  Variant(Decimal number) : value_(std::move(number)) {}
  Variant(Date date) : value_(date) {}
  Variant(Array array);
  Variant(std::shared_ptr<Object> object) : value_(std::move(object)) {}

  State state() const { return static_cast<State>(value_.index()); }
  bool isEmpty() const { return state() == State::Empty; }
  bool isNull() const { return state() == State::Null; }
  bool isText() const { return state() == State::Text; }
  bool isArray() const { return state() == State::Array; }
  bool isObject() const { return state() == State::Object; }
  // Int16, Int32, Int64, Double or Decimal. Boolean and date are not numbers here.
  bool isNumber() const;

  // The stored value. Each throws RuntimeError 13 (type mismatch) when the state is another one;
  // conversions are in convert.h.
  const std::string& text() const;
  bool boolean() const;
  Date date() const;
  const Decimal& decimal() const;
  // The array, shared until it is written to: mutableArray() gives this variant a copy of its own
  // first.
  const Array& array() const;
  Array& mutableArray();
  const std::shared_ptr<Object>& object() const;

  template <class T>
  const T* getIf() const {
    return std::get_if<T>(&value_);
  }

 private:
  // The order is that of State.
  std::variant<std::monostate, Null, std::string, std::int16_t, std::int32_t, std::int64_t, double,
               Decimal, bool, Date, std::shared_ptr<Array>, std::shared_ptr<Object>>
      value_;
};

}  // namespace tarlo::variant

namespace tarlo {
using variant::Variant;
}
