#pragma once
// Where a refused statement says that it is wrong, as it stands in the description of the error.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarlo::app {

struct Refusal {
  std::size_t line = 1;    // of the statement
  std::size_t column = 1;  // in characters
  std::string_view message;
};

// Nothing when the description does not begin with "line L, column C: ".
std::optional<Refusal> parseRefusal(std::string_view description);

// The description with its line counted in the file in which the statement's text begins on line
// `firstLine`. One that names no position gets that of the statement.
std::string placedInFile(std::string_view description, std::size_t firstLine);

// The message without its position, for statements that nobody has in front of them.
std::string_view withoutPosition(std::string_view description);

}  // namespace tarlo::app
