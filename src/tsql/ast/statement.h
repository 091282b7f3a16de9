#pragma once
// Whole statements, and the batches in which a few of them may stand together.

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tsql/ast/query.h"

namespace tarlo::tsql::ast {

struct Select {
  Query query;
  bool operator==(const Select&) const = default;
};

struct Insert {
  TableName table;
  std::vector<std::string> columns;     // empty: all that can be written, in table order
  std::vector<std::vector<Expr>> rows;  // VALUES; empty when `query` is set
  std::optional<Query> query;
  bool operator==(const Insert&) const = default;
};

struct Assignment {
  Position position;
  std::string column;
  Expr value;
  bool operator==(const Assignment&) const = default;
};

struct Update {
  TableName table;
  std::vector<Assignment> assignments;
  std::optional<Condition> where;
  bool operator==(const Update&) const = default;
};

struct Delete {
  TableName table;
  Condition where;  // always there: nothing here empties a table
  bool operator==(const Delete&) const = default;
};

struct ColumnDefinition {
  Position position;
  std::string name;
  std::string typeName;  // "" for a computed column
  std::vector<int> typeSizes;
  bool identity = false;
  bool notNull = false;
  bool primaryKey = false;
  std::optional<Expr> defaultValue;
  std::optional<Expr> computedAs;
  bool operator==(const ColumnDefinition&) const = default;
};

struct CreateTable {
  TableName table;
  std::vector<ColumnDefinition> columns;
  std::vector<std::string>
      primaryKey;  // a table constraint; empty when a column has it or there is none
  bool operator==(const CreateTable&) const = default;
};

// ALTER TABLE T ADD column.
struct AddColumn {
  TableName table;
  ColumnDefinition column;
  bool operator==(const AddColumn&) const = default;
};

struct CreateIndex {
  std::string name;
  TableName table;
  bool unique = false;
  struct Part {
    std::string column;
    bool descending = false;
    bool operator==(const Part&) const = default;
  };
  std::vector<Part> parts;
  bool operator==(const CreateIndex&) const = default;
};

// SET NOCOUNT ON|OFF and SET IDENTITY_INSERT T ON|OFF.
struct SetOption {
  std::string option;  // upper case
  std::string table;   // IDENTITY_INSERT only
  bool on = false;
  bool operator==(const SetOption&) const = default;
};

struct Declare {
  std::string variable;
  std::string typeName;
  std::vector<int> typeSizes;
  bool operator==(const Declare&) const = default;
};

struct Execute {
  Position position;
  std::string procedure;
  struct Argument {
    Expr value;
    bool out = false;
    bool operator==(const Argument&) const = default;
  };
  std::vector<Argument> arguments;
  bool operator==(const Execute&) const = default;
};

struct Statement {
  Position position;
  std::variant<Select, Insert, Update, Delete, CreateTable, AddColumn, CreateIndex, SetOption,
               Declare, Execute>
      node;
  bool operator==(const Statement&) const = default;
};

// One statement; or INSERT and the SELECT of its identity; or DECLARE, EXEC and the SELECT of the
// variable, SET NOCOUNT allowed in front. Nothing else may share a batch, so that a value that
// breaks out of its quotes cannot add statements.
struct Batch {
  std::vector<Statement> statements;
  // Ordinals of the literals that are no node of the tree, ascending: type sizes, CONVERT styles,
  // IDENTITY(1,1), titles in quotes. A translation holds for their values only.
  std::vector<int> fixedOrdinals;
  friend bool operator==(const Batch& a, const Batch& b) { return a.statements == b.statements; }
};

}  // namespace tarlo::tsql::ast
