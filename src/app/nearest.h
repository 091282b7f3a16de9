#pragma once
// The name that somebody probably meant, for messages about unknown names.

#include <span>
#include <string>
#include <string_view>

namespace tarlo::app {

// The candidate with the fewest edits from `name`, without regard to case; "" when none is near
// (more than a third of its letters, and more than two, would have to change).
std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates);

// " Did you mean 'x'?" or "".
std::string didYouMean(std::string_view name, std::span<const std::string_view> candidates);

}  // namespace tarlo::app
