#pragma once
// What the front end asks about the database of a connection. Names match without regard to case.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/type.h"

namespace tarlo::tsql {

struct Column {
  std::string name;  // as the database spells it
  Type type;
  bool isIdentity =
      false;  // the engine numbers it; an INSERT gives no value unless identity_insert is on
  bool isGenerated = false;  // computed from other columns: never written
  bool isNullable = true;
  // The engine's own type, where values are cast to the kind when they are read and to the type
  // when they are written (PostgreSQL's bool, date and the like); else "".
  std::string storedAs{};
};

struct Table {
  std::string name;  // as the database spells it
  std::vector<Column> columns;
  // Indexes into `columns` of the key that orders the rows: primary key, else empty.
  std::vector<std::size_t> key;
  // SQLite: rows without a declared key can be ordered by their rowid.
  bool hasRowid = false;

  // Index of the column, or -1.
  int find(std::string_view columnName) const;
};

class Catalogue {
 public:
  virtual ~Catalogue() = default;
  // The table, or nothing. The pointer stays valid as long as the translation runs.
  virtual const Table* findTable(std::string_view name) = 0;
  // Whether EXEC may call a procedure of this name.
  virtual bool hasProcedure(std::string_view name) = 0;
};

}  // namespace tarlo::tsql
