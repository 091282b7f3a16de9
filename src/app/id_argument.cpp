#include "app/id_argument.h"

#include <fmt/format.h>

#include <charconv>

#include "app/exit_code.h"

namespace tarlo::app {

int idFrom(const std::string& word) {
  int id = 0;
  const char* end = word.data() + word.size();
  const auto read = std::from_chars(word.data(), end, id);
  if (read.ec == std::errc() && read.ptr == end) return id;
  throw CommandError(kUsage, fmt::format("'{}' is not an id.", word));
}

}  // namespace tarlo::app
