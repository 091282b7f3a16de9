#pragma once
#include <string>

namespace tarlo::tsql::ast {

// `F`, `T.F`, `[T].[F]`. Delimiters are gone; a dot inside brackets is part of the name.
struct ColumnRef {
  std::string table;  // "" when unqualified; as typed
  std::string name;   // as typed
  // Set while resolving: how many queries outward the table stands (0 = this one), which FROM entry
  // of that query (counted through joins), which column of it; -1 before.
  int level = -1;
  int source = -1;
  int column = -1;

  friend bool operator==(const ColumnRef& a, const ColumnRef& b) {
    return a.table == b.table && a.name == b.name;
  }
};

// `@name`, `@@IDENTITY`: the name with its signs, as typed.
struct Variable {
  std::string name;
  bool operator==(const Variable&) const = default;
};

}  // namespace tarlo::tsql::ast
