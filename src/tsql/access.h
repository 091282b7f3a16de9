#pragma once
// What a batch touches, in the words of its text: known before it runs, so that whoever runs it can
// refuse it.

#include <string>

#include "tsql/position.h"

namespace tarlo::tsql {

// Delete stands apart from Write: whoever may change rows may not take them away by that.
enum class Access { Read, Write, Delete, Execute };

// A table that is read, written or deleted from, or a procedure that is called. A view counts as
// the table that it looks like: what stands behind it was decided by whoever made it.
struct Touched {
  Access access;
  std::string name;  // of a table as the database spells it
  Position position;
};

}  // namespace tarlo::tsql
