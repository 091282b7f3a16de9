#include "database/guard.h"

#include <fmt/format.h>

#include <algorithm>

#include "database/error.h"
#include "database/translation_cache.h"
#include "text/fold.h"
#include "tsql/parse/parser.h"
#include "tsql/resolve/resolver.h"

namespace tarlo::database {
namespace {

using tsql::Access;
using tsql::StatementError;
using tsql::Touched;

StatementError forbidden(const Touched& touched) {
  // The server's own tables are nobody's business, their names included.
  if (touched.access != Access::Execute && groupOf(touched.name) == TableGroup::Server) {
    return {tsql::Refusal::Name, touched.position, fmt::format("unknown table {}", touched.name)};
  }
  std::string_view what = "table {} may not be read here";
  if (touched.access == Access::Write) what = "table {} may not be written here";
  if (touched.access == Access::Delete) what = "rows of table {} may not be deleted here";
  if (touched.access == Access::Execute) what = "procedure {} may not be called here";
  return {tsql::Refusal::Forbidden, touched.position,
          fmt::format(fmt::runtime(what), touched.name)};
}

}  // namespace

std::string_view Guard::listQuery() const {
  const bool isAsked = context_ != nullptr && context_->rights.readsListedOnly &&
                       context_->rights.reads.contains(TableGroup::Business);
  return isAsked ? context_->listedTables : std::string_view();
}

bool Guard::isAlsoReadable(std::string_view name) const {
  return std::ranges::any_of(context_->alsoReadable, [&](const std::string& other) {
    return text::equalsNoCase(other, name);
  });
}

bool Guard::mayTouch(Access access, std::string_view name) const {
  const TableGroup group = groupOf(name);
  const bool isTable = access != Access::Execute;
  if (access == Access::Read && group != TableGroup::Server && isAlsoReadable(name)) return true;
  if (!covers(context_->rights, access, name)) return false;
  if (!isTable || group != TableGroup::Business || !context_->rights.readsListedOnly) return true;
  return listed_.contains(text::foldedName(name));
}

bool Guard::allows(const Footprint& footprint) const {
  if (context_ == nullptr) return true;
  const StatementRights& rights = context_->rights;
  const bool asksList =
      rights.readsListedOnly &&
      (footprint.reads | footprint.writes | footprint.deletes).contains(TableGroup::Business);
  if (!asksList && footprint.isWithin(rights)) return true;
  return std::ranges::all_of(footprint.touches, [&](const Footprint::Touch& touch) {
    return mayTouch(touch.access, touch.name);
  });
}

void Guard::refuse(const std::string& reason, std::string_view engine, std::string_view sql) const {
  if (context_->refusals != nullptr) context_->refusals->refused(sql, reason);
  throw DatabaseError(
      kForbidden, reason,
      {.engine = std::string(engine), .code = 0, .sqlState = "42501", .text = reason});
}

void Guard::checkText(const CachedTranslation& translation, std::string_view sql,
                      tsql::Catalogue& catalogue) const {
  if (allows(translation.footprint)) return;
  tsql::ast::Batch batch = tsql::parse(sql, tsql::Deletes::Known);
  for (const Touched& touched : tsql::resolve(batch, catalogue).touched) {
    if (!mayTouch(touched.access, touched.name)) refuse(forbidden(touched).what(), "tsql", sql);
  }
  refuse("The statement touches what it may not.", "tsql", sql);
}

void Guard::checkEngine(const Footprint& footprint, std::string_view sql) const {
  if (allows(footprint)) return;
  refuse("The statement touches a table that is not allowed here.", "engine", sql);
}

}  // namespace tarlo::database
