#pragma once
// How kinds are declared in a PostgreSQL database, and which kind a column of it has.

#include <optional>
#include <string>
#include <string_view>

#include "tsql/ast/statement.h"
#include "tsql/type.h"

namespace tarlo::tsql {

// integer, bigint (where the definition says so), numeric(p,s), double precision, timestamp(3),
// varchar(n) or text.
std::string postgresqlType(Type type, std::string_view typeName = {});

// The short name for casts: int4, numeric, float8, timestamp(3), text.
std::string_view postgresqlCast(Kind kind);

struct PostgresqlColumnType {
  Type type;
  // As Column::storedAs.
  std::string storedAs;
};

// Of pg_type.typname and pg_attribute.atttypmod (-1 for none). Integers of all widths and bool are
// Int; numeric is Decimal (without sizes of 38 digits, 10 of them behind the point, which bounds
// what is written as a literal, not what is read); float4 and float8 are Float; date and timestamps
// are Date; texts, uuid, json, xml and network addresses are Text. Nothing for other types: no
// statement can say such a column.
std::optional<PostgresqlColumnType> typeOfPostgresql(std::string_view typname, int typmod);

}  // namespace tarlo::tsql
