#pragma once
// What the server keeps of a drawn grid, so that the browser only has to name it: the statement
// never leaves the server.

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"
#include "siblings/grid_conditions.h"
#include "siblings/grid_definition.h"
#include "siblings/grid_statement.h"
#include "variant/object.h"

namespace tarlo::siblings {

// Immutable but for the counts. Thread-safe.
class GridState {
 public:
  GridState(GridDefinition grid, GridStatement prepared)
      : definition(std::move(grid)), statement(std::move(prepared)), conditions(definition) {}

  const GridDefinition definition;
  const GridStatement statement;
  const GridConditions conditions;

  // How many rows a view and a search have, by the text of the count statement, until the grid is
  // loaded anew.
  std::optional<std::int64_t> knownCount(const std::string& countSql) const;
  void rememberCount(const std::string& countSql, std::int64_t count);
  void forgetCounts();

  static constexpr std::size_t kMostCounts = 100;

 private:
  mutable std::mutex mutex_;
  std::map<std::string, std::int64_t> counts_;
};

// The grids of one session, by random keys. Beyond kMost the oldest goes. Thread-safe.
class SessionGrids : public Object {
 public:
  // Those of the page's session; made at the first call. Two first calls at one time may both make
  // some: the grid of one of them then is unknown, and its page says that it has to be opened
  // again.
  static std::shared_ptr<SessionGrids> of(Page& page);

  std::string add(std::shared_ptr<GridState> grid);
  std::shared_ptr<GridState> find(std::string_view key) const;  // nothing for an unknown one

  static constexpr std::size_t kMost = 40;

 private:
  struct Entry {
    std::string key;
    std::shared_ptr<GridState> grid;
  };
  mutable std::mutex mutex_;
  std::vector<Entry> entries_;  // the oldest first
};

}  // namespace tarlo::siblings
