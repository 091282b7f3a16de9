#pragma once
// Literals of a statement as the texts and declared types of its parameters.

#include <libpq-fe.h>

#include <string>
#include <vector>

#include "tsql/lex/shape.h"
#include "tsql/translation.h"

namespace tarlo::database {

struct BoundParameters {
  std::vector<Oid> types;
  // Each with a closing zero, one behind the other; parameter i begins at starts[i].
  std::string texts;
  std::vector<std::size_t> starts;
  // An integer beyond 32 bits is among them: the statement is prepared once more, for all integers
  // of 64 bits.
  bool isWide = false;

  std::vector<const char*> values() const;
};

// Decimals go as their digits. Throws StatementError when a literal does not convert or holds a
// character of code 0, which the server does not store.
BoundParameters bindLiterals(const tsql::Step& step, const tsql::Shape& shape);

}  // namespace tarlo::database
