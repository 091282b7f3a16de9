#include "database/row_budget.h"

#include "database/error.h"

namespace tarlo::database {

bool RowTotal::take(std::size_t bytes) {
  if (held_.fetch_add(bytes) + bytes <= most_) return true;
  held_ -= bytes;
  return false;
}

void RowBudget::take(std::size_t bytes) {
  if (held_ + bytes > most_) {
    excess_ = Excess::Operation;
    throw DatabaseError(kTooManyRows, "The rows are more than one operation may hold.",
                        {.engine = "budget", .code = 0, .sqlState = "54000", .text = ""});
  }
  if (!total_.take(bytes)) {
    excess_ = Excess::Process;
    throw DatabaseError(kNoRoomForRows, "All operations together hold as many rows as they may.",
                        {.engine = "budget", .code = 0, .sqlState = "53200", .text = ""});
  }
  held_ += bytes;
}

}  // namespace tarlo::database
