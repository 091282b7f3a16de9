#pragma once
// SQL Server's type names, as CAST, DECLARE and CREATE TABLE write them.

#include <optional>
#include <string_view>
#include <vector>

#include "tsql/position.h"
#include "tsql/type.h"

namespace tarlo::tsql {

// What the name stands for, beyond its kind.
enum class TypeName {
  Int,
  Bigint,
  Smallint,
  Tinyint,
  Bit,
  Decimal,  // numeric too
  Money,
  Float,
  Real,
  Varchar,  // nvarchar too
  Char,     // nchar too
  Datetime,
  Smalldatetime,
  Date
};

// The type of a name in any case, or nothing.
std::optional<TypeName> findTypeName(std::string_view name);

// Where a type is written decides the length of a text without one: 30 in a CAST, 1 in a
// declaration or a column.
enum class TypeUse { Cast, Declaration };

// The type with its sizes (-1 = MAX). A Text of MAX has length 0: no bound. bit is an Int.
// Throws StatementError (Name for an unknown type, Kind for sizes that it does not take).
Type typeOf(std::string_view name, const std::vector<int>& sizes, TypeUse use, Position position);

// Whether CONVERT between dates and texts takes the style.
bool isDateStyle(int style);

}  // namespace tarlo::tsql
