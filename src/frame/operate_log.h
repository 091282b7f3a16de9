#pragma once
// The operation log: who wrote what, one row for each logged statement. A row that cannot be
// written is lost without a word, since the statement that it tells of has been carried out.

#include "frame/page.h"

namespace tarlo::frame {

inline constexpr std::string_view kLogTable = "Zembra_OperateLog";
inline constexpr std::size_t kLongestLogged = 2000;  // UTF-16 units, before the text is rewritten

// Writes the row over the given connection. Raises nothing. A longer statement becomes "Batch
// update" in the caller's variable as well as in the row: deliberate, and callers rely on it.
void writeOperateLog(Page& page, database::Connection& connection, std::string& sql);

}  // namespace tarlo::frame
