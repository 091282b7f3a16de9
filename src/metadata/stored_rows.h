#pragma once
// Reading what exists twice, as it is now and as a frozen version. Not for use outside this folder.
// All raise DatabaseError.

#include <string_view>

#include "frame/data.h"
#include "metadata/stored_schemes.h"

namespace tarlo::metadata {

// The rows of the statement with the id behind it.
frame::Rows storedRows(Page& page, Version version, std::string_view frozenStatement,
                       std::string_view currentStatement, std::string_view id);

// The scheme's Query_Prikey, as one row.
frame::Rows keyRows(Page& page, std::string_view scheme, Version version);

// Columns of a control. The blanks are those round the equals sign.
frame::Rows controlRows(Page& page, std::string_view control, Version version,
                        std::string_view columns, std::string_view equals);

}  // namespace tarlo::metadata
