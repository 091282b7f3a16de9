#pragma once
// Faults of statements as sentences for designers.

#include <string>
#include <string_view>

#include "compile/definition.h"
#include "database/statement_check.h"
#include "frame/page.h"

namespace tarlo::scheme {

// A sentence. An unknown name is told by its display name, or as the designer wrote it; names that
// are neither are left out.
std::string wordsFor(Page& page, const database::StatementCheck& check, std::string_view statement,
                     const compile::Definition& definition);

}  // namespace tarlo::scheme
