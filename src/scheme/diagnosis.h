#pragma once
// Why a definition's statement is refused, in a designer's words: which part of the definition it
// comes from is found by compiling the parts one at a time.

#include <string>

#include "compile/definition.h"
#include "frame/page.h"

namespace tarlo::scheme {

struct Diagnosis {
  std::string where;   // such as 计算字段“差额”; "" when no part alone is at fault
  std::string reason;  // a sentence; "" for a statement that is not refused
};

// Names of the database reach the answer only as display names, or where the designer wrote them.
// At most 40 parts are tried; they are run only when the whole failed while running, and then for
// three seconds together at most. Raises DatabaseError when there is no connection.
Diagnosis diagnose(Page& page, const compile::Definition& definition, const std::string& statement);

}  // namespace tarlo::scheme
