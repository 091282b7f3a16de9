#pragma once
// What the statements of a page may touch, for as long as a piece of work lasts. The component sets
// it for each operation from the operation's row; statements that designers have put together, and
// those that were stored, run in a narrower scope of their own, whoever runs them.

#include <utility>

#include "frame/page.h"

namespace tarlo::frame {

class StatementScope {
 public:
  StatementScope(Page& page, database::StatementRights rights)
      : page_(page), before_(std::exchange(page.statements.rights, rights)) {}
  ~StatementScope() { page_.statements.rights = before_; }
  StatementScope(const StatementScope&) = delete;
  StatementScope& operator=(const StatementScope&) = delete;

 private:
  Page& page_;
  const database::StatementRights before_;
};

// Statements without which the page is as good: when the database cannot take them, the page goes
// out all the same.
class DispensableScope {
 public:
  explicit DispensableScope(Page& page)
      : page_(page), before_(std::exchange(page.statements.isEssential, false)) {}
  ~DispensableScope() { page_.statements.isEssential = before_; }
  DispensableScope(const DispensableScope&) = delete;
  DispensableScope& operator=(const DispensableScope&) = delete;

 private:
  Page& page_;
  const bool before_;
};

// Who may call what is being run.
class AccessScope {
 public:
  AccessScope(Page& page, Access access)
      : page_(page), before_(std::exchange(page.access, access)) {}
  ~AccessScope() { page_.access = before_; }
  AccessScope(const AccessScope&) = delete;
  AccessScope& operator=(const AccessScope&) = delete;

 private:
  Page& page_;
  const Access before_;
};

// Business tables of the dictionary and nothing else, read only.
inline constexpr database::StatementRights kDesignersRights = {
    .reads = {database::TableGroup::Business},
    .writes = {},
    .executes = false,
    .readsListedOnly = true};

// Runs the step in that scope: `asDesigner(page, [&] { return rows(page, stored); })`.
template <class Step>
auto asDesigner(Page& page, Step&& step) {
  const StatementScope scope(page, kDesignersRights);
  return std::forward<Step>(step)();
}

// The statements of a page that has no rights yet; `rights` are its first ones.
inline database::StatementContext statementContext(const database::StatementRights& rights = {}) {
  database::StatementContext context;
  context.rights = rights;
  context.listedTables = "select DDT_Name from Zembra_DataDict_Table where Zembra_Flag <> 0";
  return context;
}

}  // namespace tarlo::frame
