#include "services/cascade_levels.h"

#include <algorithm>

#include "metadata/stored_controls.h"
#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::services {
namespace {

constexpr std::string_view kSessionName = "TarloRelation.levels";

std::string_view withoutBrackets(std::string_view name) {
  name = text::trim(name);
  if (name.size() > 1 && name.front() == '[' && name.back() == ']') {
    name = name.substr(1, name.size() - 2);
  }
  return name;
}

// The column of `column`, `table.column` or `[table].[column]`.
std::optional<std::string> columnOf(std::string_view name, std::string_view table) {
  const std::size_t dot = name.find('.');
  if (dot != std::string_view::npos) {
    if (!text::equalsNoCase(withoutBrackets(name.substr(0, dot)), table)) return {};
    name = name.substr(dot + 1);
  }
  return std::string(withoutBrackets(name));
}

}  // namespace

std::optional<CascadeLevel> cascadeLevel(std::string_view table, std::string_view link,
                                         std::string_view value, std::string_view text,
                                         std::string_view condition) {
  CascadeLevel level{std::string(withoutBrackets(table)), "", "", "",
                     std::string(text::trim(condition))};
  const auto linkColumn = columnOf(link, level.table);
  const auto valueColumn = columnOf(value, level.table);
  const auto textColumn = columnOf(text, level.table);
  if (!linkColumn || !valueColumn || !textColumn) return {};
  level.link = *linkColumn;
  level.value = *valueColumn;
  level.text = *textColumn;
  return level;
}

std::vector<CascadeLevel> cascadeLevels(std::string_view relation) {
  std::vector<CascadeLevel> levels;
  for (const metadata::ControlLevel& written : metadata::controlLevels(relation)) {
    if (written.text.empty()) continue;
    if (const auto level = cascadeLevel(written.table, written.link, written.value, written.text,
                                        written.condition)) {
      levels.push_back(*level);
    }
  }
  return levels;
}

std::shared_ptr<OfferedCascades> OfferedCascades::of(Page& page) {
  const Variant kept = page.session.get(kSessionName);
  if (kept.isObject()) {
    if (auto offered = std::dynamic_pointer_cast<OfferedCascades>(kept.object())) return offered;
  }
  auto offered = std::make_shared<OfferedCascades>();
  page.session.put(kSessionName, Variant(std::shared_ptr<Object>(offered)));
  return offered;
}

void OfferedCascades::add(const CascadeLevel& level, const database::StatementRights& rights) {
  const std::lock_guard lock(mutex_);
  std::erase_if(entries_, [&](const Entry& entry) { return entry.level == level; });
  if (entries_.size() >= kMost) entries_.erase(entries_.begin());
  entries_.push_back({level, rights});
}

std::optional<database::StatementRights> OfferedCascades::find(const CascadeLevel& level) const {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find(entries_, level, &Entry::level);
  if (found == entries_.end()) return {};
  return found->rights;
}

void offerCascade(Page& page, std::string_view relation, const database::StatementRights& rights) {
  const auto offered = OfferedCascades::of(page);
  for (const CascadeLevel& level : cascadeLevels(relation)) offered->add(level, rights);
}

}  // namespace tarlo::services
