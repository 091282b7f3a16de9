#pragma once
// Decimals as the digits that they are written with, for engines that keep them exactly.

#include <string>
#include <string_view>

namespace tarlo::database {

// The number with at most `scale` digits behind the point, a 5 behind them rounded away from zero.
// `text`: optional sign, digits, optional point and digits, at least one digit. The result has a
// digit in front of the point and no "+"; zeros at the end are kept.
std::string roundedDigits(std::string_view text, int scale);

}  // namespace tarlo::database
