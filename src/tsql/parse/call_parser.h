#pragma once
// Function calls, those with a syntax of their own included, and CASE.

#include "tsql/parse/operand.h"

namespace tarlo::tsql {

// The next tokens are a name and an opening parenthesis.
Operand parseCall(TokenStream& tokens);
// The next token is CASE.
Operand parseCase(TokenStream& tokens);

}  // namespace tarlo::tsql
