#pragma once
// How kinds are declared in a SQLite file, and which kind a declared type stands for. Both ways in
// one place: the DDL printer writes what the catalogue reads.

#include <string>
#include <string_view>

#include "tsql/type.h"

namespace tarlo::tsql {

// INTEGER, TEXT(n) or TEXT, REAL(p,s), FLOAT, `DATETIME TEXT`. The affinity that SQLite takes from
// it stores every kind as the functions expect it: decimals as reals, dates as canonical text.
// Collations are not part of it.
std::string declaredType(Type type);

// The kind of a column by its declared type, for files of other programs too: DATE or TIME anywhere
// is Date; INT, BIT or BOOL is Int; CHAR, CLOB, TEXT or nothing is Text; DEC, NUM, MONEY and REAL
// with sizes are Decimal, without sizes Float (a decimal of unknown scale must not be rounded);
// anything else is Text.
Type typeOfDeclared(std::string_view declared);

}  // namespace tarlo::tsql
