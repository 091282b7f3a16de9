#pragma once
// Text from outside as it may stand in a log line: quoted, on one line, of bounded length.

#include <string>
#include <string_view>

namespace tarlo::host {

inline constexpr std::size_t kMostLogText = 2000;

std::string logText(std::string_view text);

}  // namespace tarlo::host
