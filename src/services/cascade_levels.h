#pragma once
// The levels of cascades that a session has been shown. Their rows are asked for by the browser,
// level by level; what it may ask for is what a page of this session offered, not what an address
// names.

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"
#include "variant/object.h"

namespace tarlo::services {

// Names without brackets, columns without their table.
struct CascadeLevel {
  std::string table;
  std::string link;  // the column that relates the level to the one before
  std::string value;
  std::string text;
  std::string condition;

  bool operator==(const CascadeLevel&) const = default;
};

// One level from its five pieces as pages write them: names may be in brackets, a column with its
// table in front. Nothing when a column names another table.
std::optional<CascadeLevel> cascadeLevel(std::string_view table, std::string_view link,
                                         std::string_view value, std::string_view text,
                                         std::string_view condition);
// Those of a cascade's definition (metadata/stored_controls.h). Pieces that are no level are left
// out.
std::vector<CascadeLevel> cascadeLevels(std::string_view relation);

class OfferedCascades : public Object {
 public:
  // Those of the page's session; made at the first call.
  static std::shared_ptr<OfferedCascades> of(Page& page);

  // Beyond kMost the oldest goes.
  void add(const CascadeLevel& level, const database::StatementRights& rights);
  // The rights under which its rows are read; nothing when it was not offered.
  std::optional<database::StatementRights> find(const CascadeLevel& level) const;

  static constexpr std::size_t kMost = 200;

 private:
  struct Entry {
    CascadeLevel level;
    database::StatementRights rights;
  };
  mutable std::mutex mutex_;
  std::vector<Entry> entries_;  // the oldest first
};

// The page shows a cascade whose levels are read with these rights.
void offerCascade(Page& page, std::string_view relation, const database::StatementRights& rights);

}  // namespace tarlo::services
