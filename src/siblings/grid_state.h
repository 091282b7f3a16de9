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
#include "siblings/grid_definition.h"
#include "siblings/grid_statement.h"
#include "variant/object.h"

namespace tarlo::siblings {

// What a grid's drawing needs of its statement, made once for all drawings of the same list in a
// session.
struct PreparedGrid {
  PreparedGrid(const GridDefinition& grid, tsql::Catalogue& catalogue);
  // Whether the grid would be prepared to the same.
  bool serves(const GridDefinition& grid) const;

  const std::string sql;
  const std::string orderBy;
  const std::size_t shown;  // columns, all of them for a grid without captions
  const std::int64_t pageSize;
  const GridStatement statement;
  const std::string ordered;    // all rows in the grid's order; "" for a grid without one
  const std::string firstPage;  // before any view, search or sort
};

// Immutable but for the counts. Thread-safe.
class GridState {
 public:
  // `page`: as it is while the grid is drawn.
  GridState(const Page& page, GridDefinition grid, std::shared_ptr<const PreparedGrid> preparedGrid)
      : definition(std::move(grid)),
        prepared(std::move(preparedGrid)),
        conditions(definition),
        rights(page.statements.rights),
        access(page.access) {}

  const GridDefinition definition;
  const std::shared_ptr<const PreparedGrid> prepared;
  const GridConditions conditions;
  // Its rows are read later as they were when it was drawn: by the same rights, for those only who
  // may still call what drew it.
  const database::StatementRights rights;
  const frame::Access access;

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
  // That of the newest grid that it serves; nothing when there is none.
  std::shared_ptr<const PreparedGrid> preparedFor(const GridDefinition& grid) const;
  // True when the last grid drawn was another list: its row has to be written then.
  bool noteDrawn(const std::shared_ptr<const PreparedGrid>& prepared);

  static constexpr std::size_t kMost = 40;

 private:
  struct Entry {
    std::string key;
    std::shared_ptr<GridState> grid;
  };
  mutable std::mutex mutex_;
  std::vector<Entry> entries_;  // the oldest first
  std::shared_ptr<const PreparedGrid> lastDrawn_;
};

}  // namespace tarlo::siblings
