#include "siblings/grid_state.h"

#include <fmt/format.h>

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <system_error>

#include "text/pieces.h"

namespace tarlo::siblings {
namespace {

constexpr std::string_view kSessionName = "TarloTable.grids";

// 128 bits: a key lets its session see the rows of a statement, and cannot be guessed.
std::string randomKey() {
  std::array<std::uint64_t, 2> bits;
  if (getrandom(bits.data(), sizeof bits, 0) != static_cast<ssize_t>(sizeof bits)) {
    throw std::system_error(errno, std::generic_category(), "getrandom");
  }
  return fmt::format("{:016x}{:016x}", bits[0], bits[1]);
}

std::size_t shownOf(const GridDefinition& grid) {
  return grid.captions.empty() ? SIZE_MAX : grid.captions.size();
}

}  // namespace

PreparedGrid::PreparedGrid(const GridDefinition& grid, tsql::Catalogue& catalogue)
    : sql(grid.sql),
      orderBy(grid.orderBy),
      shown(shownOf(grid)),
      pageSize(grid.rowsPerPage()),
      statement(grid.sql, grid.orderBy, shown, catalogue),
      ordered(text::trim(orderBy).empty() ? "" : statement.all({}, {})),
      firstPage(statement.page({}, {}, 0, pageSize)) {}

bool PreparedGrid::serves(const GridDefinition& grid) const {
  return pageSize == grid.rowsPerPage() && shown == shownOf(grid) && orderBy == grid.orderBy &&
         sql == grid.sql;
}

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

std::shared_ptr<const PreparedGrid> SessionGrids::preparedFor(const GridDefinition& grid) const {
  const std::lock_guard lock(mutex_);
  for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
    if (entry->grid->prepared->serves(grid)) return entry->grid->prepared;
  }
  return nullptr;
}

bool SessionGrids::noteDrawn(const std::shared_ptr<const PreparedGrid>& prepared) {
  const std::lock_guard lock(mutex_);
  const bool isSame = lastDrawn_ != nullptr && lastDrawn_->sql == prepared->sql &&
                      lastDrawn_->ordered == prepared->ordered;
  lastDrawn_ = prepared;
  return !isSame;
}

}  // namespace tarlo::siblings
