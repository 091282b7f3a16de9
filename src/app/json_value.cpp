#include "app/json_value.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>

#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::app {
namespace {

using variant::State;

constexpr std::string_view kJsonPrefix = "json:";

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

Variant fromJson(const Json& json);

Variant integerFromJson(const Json& json) {
  if (json.is_number_unsigned() &&
      json.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()}) {
    return json.get<double>();
  }
  const auto number = json.get<std::int64_t>();
  const bool narrow = number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
  return narrow ? Variant(static_cast<std::int32_t>(number)) : Variant(number);
}

bool isTable(const Json& list) {
  if (list.empty() || !list[0].is_array() || list[0].empty()) return false;
  return std::all_of(list.begin(), list.end(), [&](const Json& column) {
    return column.is_array() && column.size() == list[0].size();
  });
}

Variant tableFromJson(const Json& list) {
  const auto columns = static_cast<std::ptrdiff_t>(list.size());
  const auto rows = static_cast<std::ptrdiff_t>(list[0].size());
  Array table({columns - 1, rows - 1});
  for (std::ptrdiff_t column = 0; column < columns; ++column) {
    for (std::ptrdiff_t row = 0; row < rows; ++row) {
      table.at(column, row) =
          fromJson(list[static_cast<std::size_t>(column)][static_cast<std::size_t>(row)]);
    }
  }
  return table;
}

Variant listFromJson(const Json& list) {
  if (isTable(list)) return tableFromJson(list);
  std::vector<Variant> elements;
  for (const Json& element : list) elements.push_back(fromJson(element));
  return Array::of(std::move(elements));
}

Variant fromJson(const Json& json) {
  if (json.is_null()) return variant::Null{};
  if (json.is_boolean()) return json.get<bool>();
  if (json.is_number_integer()) return integerFromJson(json);
  if (json.is_number_float()) return json.get<double>();
  if (json.is_string()) return json.get<std::string>();
  if (json.is_array()) return listFromJson(json);
  if (json.empty()) return {};
  throw ArgumentError("an object with members is no value; {} is Empty");
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

Variant parseArgument(std::string_view argument) {
  if (!argument.starts_with(kJsonPrefix)) return argument;
  argument.remove_prefix(kJsonPrefix.size());
  if (argument.empty()) return {};
  // Without exceptions: the parser's own messages speak of its internals.
  const Json json = Json::parse(argument, nullptr, false);
  if (json.is_discarded()) {
    throw ArgumentError(fmt::format("what follows \"json:\" is not JSON: {}", argument));
  }
  return fromJson(json);
}

std::string jsonText(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace tarlo::app
