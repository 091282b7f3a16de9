#include "siblings/grid_state.h"

#include <fmt/format.h>

#include <algorithm>
#include <random>

namespace tarlo::siblings {
namespace {

constexpr std::string_view kSessionName = "TarloTable.grids";

std::string randomKey() {
  std::random_device source;
  return fmt::format("{:08x}{:08x}{:08x}{:08x}", source(), source(), source(), source());
}

}  // namespace

std::optional<std::int64_t> GridState::knownCount(const std::string& countSql) const {
  const std::lock_guard lock(mutex_);
  const auto found = counts_.find(countSql);
  if (found == counts_.end()) return {};
  return found->second;
}

void GridState::rememberCount(const std::string& countSql, std::int64_t count) {
  const std::lock_guard lock(mutex_);
  if (counts_.size() >= kMostCounts) counts_.clear();
  counts_.insert_or_assign(countSql, count);
}

void GridState::forgetCounts() {
  const std::lock_guard lock(mutex_);
  counts_.clear();
}

std::shared_ptr<SessionGrids> SessionGrids::of(Page& page) {
  const Variant kept = page.session.get(kSessionName);
  if (kept.isObject()) {
    if (auto grids = std::dynamic_pointer_cast<SessionGrids>(kept.object())) return grids;
  }
  auto grids = std::make_shared<SessionGrids>();
  page.session.put(kSessionName, Variant(std::shared_ptr<Object>(grids)));
  return grids;
}

std::string SessionGrids::add(std::shared_ptr<GridState> grid) {
  const std::lock_guard lock(mutex_);
  if (entries_.size() >= kMost) entries_.erase(entries_.begin());
  entries_.push_back({randomKey(), std::move(grid)});
  return entries_.back().key;
}

std::shared_ptr<GridState> SessionGrids::find(std::string_view key) const {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find(entries_, key, &Entry::key);
  return found == entries_.end() ? nullptr : found->grid;
}

}  // namespace tarlo::siblings
