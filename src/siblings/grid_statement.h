#pragma once
// A grid's statement, and what the grid makes of it: one page, all rows, the number of rows, each
// under the conditions of a view and a search. Everything is built on the statement's tree, so no
// text from outside is ever spliced in.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast/query.h"
#include "tsql/catalogue.h"

namespace tarlo::siblings {

// A column of the result, from 1, has the value. A number's text is compared as a number.
struct GridMatch {
  std::size_t column = 0;
  std::string value;
};

struct GridFilter {
  std::vector<std::string> conditions;  // all of them hold; a leading AND is allowed, "" is none
  std::string search;                   // any shown column holds it; "" for none
  std::vector<GridMatch> matches;       // all of them hold; one on a column that is not there never
};

struct GridSort {
  std::size_t column = 0;  // of the result, from 1; 0 or too high: the grid's own order
  bool descending = false;
};

class GridStatement {
 public:
  // `shown`: how many columns, the row's id not counted, are shown and searched. An `orderBy` that
  // the statement cannot have is dropped: the rows still come, by their ids. Raises DatabaseError
  // for a statement that is refused.
  GridStatement(std::string_view sql, std::string_view orderBy, std::size_t shown,
                tsql::Catalogue& catalogue);

  // T-SQL texts. They raise DatabaseError for a condition that cannot be read as one.
  std::string page(const GridFilter& filter, const GridSort& sort, std::int64_t offset,
                   std::int64_t count) const;
  std::string all(const GridFilter& filter, const GridSort& sort) const;
  std::string count(const GridFilter& filter) const;

  // Titles of the result, the row's id first.
  const std::vector<std::string>& titles() const { return titles_; }

 private:
  tsql::ast::Query filtered(const GridFilter& filter) const;
  std::vector<tsql::ast::OrderItem> order(const GridSort& sort) const;
  bool isRowId(const tsql::ast::Expr& expr) const;
  void addTieBreaker(std::vector<tsql::ast::OrderItem>& items) const;

  tsql::ast::Query query_;                      // resolved, without an order of its own
  std::vector<tsql::ast::OrderItem> ownOrder_;  // resolved
  std::vector<std::string> titles_;
  std::size_t shown_;
};

}  // namespace tarlo::siblings
