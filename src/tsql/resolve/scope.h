#pragma once
// The tables that a query reads and the names under which its expressions reach their columns.

#include <string>
#include <vector>

#include "tsql/ast/expr.h"
#include "tsql/catalogue.h"
#include "tsql/position.h"
#include "tsql/resolve/resolver.h"

namespace tarlo::tsql {

// One FROM entry: a table of the catalogue, or a derived table with the titles of its query.
class Source {
 public:
  Source(std::string exposedName, const Table& table);
  Source(std::string exposedName, std::vector<ResultColumn> columns);

  const std::string& exposedName() const { return exposedName_; }
  std::size_t size() const;
  const std::string& columnName(std::size_t index) const;
  Type columnType(std::size_t index) const;
  int find(std::string_view columnName) const;

 private:
  std::string exposedName_;
  const Table* table_ = nullptr;
  std::vector<ResultColumn> columns_;
};

class Scope {
 public:
  explicit Scope(const Scope* outer = nullptr) : outer_(outer) {}

  // Refuses an exposed name that stands already.
  void add(Source source, Position position);
  const std::vector<Source>& sources() const { return sources_; }

  // While FROM is read, only a part of the sources can be seen: none by a derived table, those of
  // the join so far by ON. At first none, after showAll() all.
  void show(std::size_t begin, std::size_t end);
  void showAll() { show(0, sources_.size()); }

  // Sets level, source and column and returns the column's type, or refuses the name as unknown or
  // ambiguous.
  Type resolve(ast::ColumnRef& ref, Position position) const;
  // The source of `T.*`.
  std::size_t findSource(std::string_view exposedName, Position position) const;

 private:
  bool resolveHere(ast::ColumnRef& ref, Position position) const;

  const Scope* outer_;
  std::vector<Source> sources_;
  std::size_t visibleBegin_ = 0;
  std::size_t visibleEnd_ = 0;
};

}  // namespace tarlo::tsql
