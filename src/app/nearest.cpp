#include "app/nearest.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "text/fold.h"

namespace tarlo::app {
namespace {

std::size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t change = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({change, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates) {
  // No name is so long; a longer text is not a slip of the hand.
  if (name.size() > 100) return {};
  const std::string folded = text::foldedName(name);
  std::string_view best;
  std::size_t fewest = std::max<std::size_t>(2, name.size() / 3) + 1;
  for (const std::string_view candidate : candidates) {
    const std::size_t edits = editDistance(folded, text::foldedName(candidate));
    if (edits < fewest && edits < candidate.size()) {
      fewest = edits;
      best = candidate;
    }
  }
  return best;
}

std::string didYouMean(std::string_view name, std::span<const std::string_view> candidates) {
  const std::string_view nearest = nearestName(name, candidates);
  return nearest.empty() ? std::string() : fmt::format(" Did you mean '{}'?", nearest);
}

}  // namespace tarlo::app
