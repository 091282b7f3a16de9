#pragma once
// One SELECT: its clauses, and the order that its rows can be asked for in.

#include <string>
#include <vector>

#include "tsql/print/printing.h"

namespace tarlo::tsql::print {

// c1, c2, ...: the items of every query, counted from 0.
std::string itemName(std::size_t index);
// Whether the query gives one row for a group, or for all rows.
bool holdsAggregate(const ast::QuerySpec& spec);
// What is wanted of its items.
std::vector<Type> typesOf(const ast::QuerySpec& spec);
bool comparesOutside(const Writer& writer, const std::vector<Type>& types);

// What becomes of rows with equal values.
enum class Duplicates {
  Kept,
  Removed,   // by the DISTINCT of this query
  Compared,  // rows are compared with those of other parts
  Outside    // in the query round this one
};

// The clauses of one part; its scope stands while the object lives.
class SpecPrinter {
 public:
  SpecPrinter(Writer& writer, const ast::QuerySpec& spec);
  ~SpecPrinter();
  SpecPrinter(const SpecPrinter&) = delete;
  SpecPrinter& operator=(const SpecPrinter&) = delete;

  // Everything before ORDER BY.
  std::string body(Duplicates duplicates) const;
  std::string limit() const;

  // The order of an expression over the tables.
  std::string sorted(const ast::Expr& expr, bool isDescending) const;
  // The order of a select item, by its number where that says it.
  std::string sortedItem(std::size_t index, bool isDescending) const;
  std::vector<std::string> sortedGroups() const;
  // The key of the only table, by which rows without an order come.
  std::vector<std::string> sortedKey() const;

 private:
  class GroupsSeen;

  std::string compared(const ast::Expr& expr, Use use) const;
  std::string items(bool areCompared) const;
  std::string printFrom();
  std::string printItem(const ast::FromItem& item);
  std::string joinCondition(const ast::Join& join);
  std::string printSource(const ast::TableSource& source);

  Writer& writer_;
  const ast::QuerySpec& spec_;
  std::string from_;
};

}  // namespace tarlo::tsql::print
