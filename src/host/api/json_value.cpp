#include "host/api/json_value.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <vector>

#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::host {
namespace {

using variant::State;

// A double is exact for a decimal when its shortest text says the same digits again.
Json decimalToJson(const std::string& digits) {
  const char* end = digits.data() + digits.size();
  std::int64_t whole = 0;
  if (const auto read = std::from_chars(digits.data(), end, whole);
      read.ec == std::errc() && read.ptr == end) {
    return whole;
  }
  double number = 0;
  const auto read = std::from_chars(digits.data(), end, number);
  if (read.ec == std::errc() && read.ptr == end && fmt::format("{}", number) == digits) {
    return number;
  }
  return digits;
}

Json arrayToJson(const Array& array, std::vector<std::ptrdiff_t>& indexes) {
  Json list = Json::array();
  const std::size_t dimension = indexes.size() + 1;
  for (std::ptrdiff_t i = 0; i <= array.upperBound(dimension); ++i) {
    indexes.push_back(i);
    const bool whole = indexes.size() == array.rank();
    list.push_back(whole ? toJson(array.at(indexes)) : arrayToJson(array, indexes));
    indexes.pop_back();
  }
  return list;
}

}  // namespace

Json toJson(const Variant& value) {
  switch (value.state()) {
    case State::Empty:
      return Json::object();
    case State::Null:
      return nullptr;
    case State::Text:
      return value.text();
    case State::Boolean:
      return value.boolean();
    case State::Double:
      return *value.getIf<double>();
    case State::Decimal:
      return decimalToJson(value.decimal().digits);
    case State::Date:
      return variant::toText(value);
    case State::Object:
      return Json{{"object", true}};
    case State::Array: {
      std::vector<std::ptrdiff_t> indexes;
      const Array& array = value.array();
      return array.rank() == 0 ? Json::array() : arrayToJson(array, indexes);
    }
    default:
      return variant::toInt64(value);
  }
}

std::string jsonText(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace tarlo::host
