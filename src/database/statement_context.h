#pragma once
// For whom a connection's statements run: what they may touch and cost, whether anybody still wants
// their rows, and who is told of a refusal. A borrower gives it to the connection; it belongs to
// the connection until that is given back.

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "database/error.h"
#include "database/rights.h"
#include "database/row_budget.h"

namespace tarlo::database {

// Told of every statement that was refused for what it touches, and of those that failed in another
// way: an operation that goes on after errors may not tell anybody.
class RefusalLog {
 public:
  virtual ~RefusalLog() = default;
  virtual void refused(std::string_view statement, std::string_view reason) noexcept = 0;
  virtual void failed(const DatabaseError& /*error*/) noexcept {}
};

struct StatementContext {
  StatementRights rights;
  // T-SQL whose first column names the listed business tables; "" lists none. What has been listed
  // counts at once, what is listed no longer may count for a second yet.
  std::string_view listedTables;
  std::span<const std::string> alsoReadable;  // further tables of any group but the server's own
  RefusalLog* refusals = nullptr;             // may be nothing
  RowBudget* budget = nullptr;                // may be nothing: rows cost nothing
  // Asked a few times a second while a statement that only reads is running: false ends it.
  std::function<bool()> isWanted;
  // False: whoever runs the statements goes on as well without them, and their failure is not told.
  bool isEssential = true;

  // Tells of a failure, if somebody wants to know. A refusal has been told by then.
  void tell(const DatabaseError& error) const noexcept {
    if (error.number() == kForbidden || !isEssential || refusals == nullptr) return;
    refusals->failed(error);
  }
};

}  // namespace tarlo::database
