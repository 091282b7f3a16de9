#include "app/json_value.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>

#include "variant/array.h"

namespace tarlo::app {
namespace {

constexpr std::string_view kJsonPrefix = "json:";

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

}  // namespace tarlo::app
