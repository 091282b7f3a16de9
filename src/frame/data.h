#pragma once
// The data procedures: the road from an operation to the database. One call is one borrowed
// connection and one statement, committed by itself. The connection string is read from
// Application("strConn") at every call. All raise DatabaseError; none of them handles anything. An
// empty statement is refused by the database. A statement that touches more than page.statements
// allows raises DatabaseError (kForbidden).

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"
#include "variant/array.h"

namespace tarlo::frame {

// A connection to the page's database, for what the procedures below do not offer: reading a few
// rows of many, the catalogue. Give it back soon. Its statements are held to page.statements, as
// they stand when each is run.
database::Lease borrowConnection(Page& page);

// One row of an answer. It points into the Rows that it came from. Columns count from 0; error 9
// for one that the statement does not give.
class Row {
 public:
  explicit Row(std::span<const Variant> cells) : cells_(cells) {}
  std::size_t columns() const { return cells_.size(); }
  const Variant& value(std::size_t column) const;
  std::string text(std::size_t column) const;  // Null gives ""

 private:
  std::span<const Variant> cells_;
};

class Rows {
 public:
  Rows() = default;  // no row
  // Rows as (column, row); none for a value that is no array.
  explicit Rows(Variant table) : table_(std::move(table)) {}

  bool empty() const { return !table_.isArray(); }
  std::size_t size() const;
  // Error 9 behind the last row. Error 13 when there is none at all: what indexing an answer
  // without rows has always raised, and procedures in resume-next mode rely on it.
  Row operator[](std::size_t row) const;
  Row front() const { return (*this)[0]; }

  // As operations give them: (column, row), both from 0; Empty when there are none.
  const Variant& table() const { return table_; }
  // The same, but Null when there are none.
  Variant tableOrNull() const { return empty() ? Variant(variant::Null{}) : table_; }

  class Iterator {
   public:
    Iterator(const Rows& rows, std::size_t row) : rows_(&rows), row_(row) {}
    Row operator*() const { return (*rows_)[row_]; }
    Iterator& operator++() {
      ++row_;
      return *this;
    }
    bool operator==(const Iterator& other) const { return row_ == other.row_; }

   private:
    const Rows* rows_;
    std::size_t row_;
  };
  Iterator begin() const { return {*this, 0}; }
  Iterator end() const { return {*this, size()}; }

 private:
  Variant table_;
};

// `for (frame::Row row : frame::rows(page, sql)) ... row.text(0)`
Rows rows(Page& page, std::string_view sql);

// The first column of the first row; `otherwise` when there are no rows.
Variant firstCell(Page& page, std::string_view sql, Variant otherwise = {});
// The same as text: Null and no row give "".
std::string firstText(Page& page, std::string_view sql);

// Runs a statement that is not to be logged. Gives the field NeoID when the text ends in "NeoID"
// (case counts), else Empty.
Variant execSQL(Page& page, std::string_view sql);
// The operation log: who wrote what, one row for each logged statement.
inline constexpr std::string_view kLogTable = "Zembra_OperateLog";
inline constexpr std::size_t kLongestLogged = 2000;  // UTF-16 units, before the text is rewritten
// As execSQL, and writes the statement to the operation log when it did not fail. A longer text is
// logged as "Batch update", and the caller's variable then holds these words too: whatever uses the
// text afterwards sees them, and pages rely on it.
Variant execSQLLogged(Page& page, std::string& sql);

// Titles of the statement's columns. Opens the statement and reads no row.
std::vector<std::string> titles(Page& page, std::string_view sql);
// As operations give them: index 0 Empty, column k at index k.
Variant titleArray(const std::vector<std::string>& titles);

}  // namespace tarlo::frame
