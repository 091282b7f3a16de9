#pragma once
// The version, which the build alone knows.

#include <string_view>

namespace tarlo::app {

// "major.minor.patch".
std::string_view version();

}  // namespace tarlo::app
