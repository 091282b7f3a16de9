#pragma once
// For whom a connection's statements run: what they may touch and cost, whether anybody still wants
// their rows, and who is told of a refusal. A borrower gives it to the connection; it belongs to
// the connection until that is given back.

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "database/rights.h"
#include "database/row_budget.h"

namespace tarlo::database {

// Told of every statement that was refused for what it touches.
class RefusalLog {
 public:
  virtual ~RefusalLog() = default;
  virtual void refused(std::string_view statement, std::string_view reason) noexcept = 0;
};

struct StatementContext {
  StatementRights rights;
  // T-SQL whose first column names the listed business tables; "" lists none. The connection asks
  // it when a statement names a business table, and again when anything was written since.
  std::string_view listedTables;
  std::span<const std::string> alsoReadable;  // further tables of any group but the server's own
  RefusalLog* refusals = nullptr;             // may be nothing
  RowBudget* budget = nullptr;                // may be nothing: rows cost nothing
  // Asked a few times a second while a statement that only reads is running: false ends it.
  std::function<bool()> isWanted;
};

}  // namespace tarlo::database
