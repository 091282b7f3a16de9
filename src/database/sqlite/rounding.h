#pragma once
// Decimal rounding of doubles, done on the digits that people see: 2.675 is a tie, although the
// nearest double lies below it.

#include <string>

namespace tarlo::database {

enum class Rounding { HalfAway, Truncate };

// The number with `places` digits behind the point, all of them written; with a negative count the
// digits before the point become 0.
std::string roundedText(double number, int places, Rounding rounding = Rounding::HalfAway);
double rounded(double number, int places, Rounding rounding = Rounding::HalfAway);

}  // namespace tarlo::database
