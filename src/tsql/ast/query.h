#pragma once
// SELECT: one query block, or several united.

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tsql/ast/expr.h"

namespace tarlo::tsql::ast {

struct SelectItem {
  Position position;
  std::optional<Expr> expr;  // nothing for `*` and `T.*`
  std::string starTable;     // `T.*`: T; `*`: ""
  std::string alias;         // as typed, delimiters removed; "" when there is none
  bool operator==(const SelectItem&) const = default;
};

struct TableName {
  std::string schema;  // `dbo`, or ""
  std::string name;
  std::string alias;
  bool operator==(const TableName&) const = default;
};

struct DerivedTable {
  Box<Query> query;
  std::string alias;
  bool operator==(const DerivedTable&) const;
};

struct TableSource {
  Position position;
  std::variant<TableName, DerivedTable> table;
  bool operator==(const TableSource&) const = default;
};

enum class JoinKind { Inner, Left, Right, Full, Cross };
struct Join {
  JoinKind kind;
  TableSource table;
  std::optional<Condition> on;  // nothing for Cross
  bool operator==(const Join&) const = default;
};

// One entry of the comma list: a table and what is joined to it.
struct FromItem {
  TableSource table;
  std::vector<Join> joins;
  bool operator==(const FromItem&) const = default;
};

struct QuerySpec {
  Position position;
  bool distinct = false;
  std::optional<Expr> top;  // TOP n, TOP (n): an integer literal
  std::vector<SelectItem> items;
  std::vector<FromItem> from;  // empty: no FROM clause
  std::optional<Condition> where;
  std::vector<Expr> groupBy;
  std::optional<Condition> having;
  bool operator==(const QuerySpec&) const = default;
};

struct OrderItem {
  Expr expr;
  bool descending = false;
  // Set while resolving: the select item that it names by its title, its number or by being the
  // same expression; -1 for an expression over the tables.
  int item = -1;
  friend bool operator==(const OrderItem& a, const OrderItem& b) {
    return a.expr == b.expr && a.descending == b.descending;
  }
};

enum class SetOp { Union, UnionAll };
struct Query {
  Position position;
  std::vector<QuerySpec> parts;  // one or more
  std::vector<SetOp> ops;        // ops[i] stands before parts[i + 1]; they group to the left
  std::vector<OrderItem> orderBy;
  // OFFSET n ROWS FETCH NEXT m ROWS ONLY: integer literals; no fetch without an offset.
  std::optional<Expr> offset;
  std::optional<Expr> fetch;
  bool operator==(const Query&) const = default;
};

}  // namespace tarlo::tsql::ast
