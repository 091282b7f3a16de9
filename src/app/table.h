#pragma once
// An aligned table on a stream. Column widths are measured on the first rows; those that follow go
// out at once, so memory stays bounded however many rows there are.

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tarlo::app {

// Rows that are held to measure the widths.
inline constexpr std::size_t kMeasuredRows = 1000;
// A column is padded to this many display columns at most; a longer cell pushes its row to the
// right.
inline constexpr std::size_t kMaxPadding = 60;

struct Cell {
  std::string text;  // as visible() gives it
  bool alignRight = false;
};

class Table {
 public:
  // The titles may hold any character. With a `maxWidth` other than 0 the table stays within so
  // many places: long cells are cut, and columns that do not fit are left out.
  Table(std::ostream& out, const std::vector<std::string>& titles, std::size_t maxWidth = 0);

  // As many cells as there are titles.
  void add(std::vector<Cell> row);
  // Writes what is still held. Nothing may be added afterwards.
  void finish();
  std::size_t rowCount() const { return rowCount_; }
  // How many columns, from the first, were written. Known when rows have been.
  std::size_t columnsShown() const { return widths_.size(); }

 private:
  void measure();
  void leaveOutWhatDoesNotFit();
  void writeHeld();
  void writeRow(const std::vector<Cell>& row);

  std::ostream& out_;
  std::size_t maxWidth_;
  std::vector<Cell> titles_;
  std::vector<std::size_t> widths_;
  std::vector<std::vector<Cell>> held_;
  bool streaming_ = false;
  std::size_t rowCount_ = 0;
};

}  // namespace tarlo::app
