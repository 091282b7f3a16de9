#include "app/table.h"

#include <algorithm>

#include "text/display_width.h"

namespace tarlo::app {
namespace {

constexpr std::string_view kGap = "  ";

}  // namespace

Table::Table(std::ostream& out, const std::vector<std::string>& titles, std::size_t maxWidth)
    : out_(out), maxWidth_(maxWidth) {
  for (const std::string& title : titles) {
    titles_.push_back({text::visible(title), true});
    widths_.push_back(std::min(kMaxPadding, text::displayWidth(titles_.back().text)));
  }
}

void Table::add(std::vector<Cell> row) {
  ++rowCount_;
  if (streaming_) {
    writeRow(row);
    return;
  }
  held_.push_back(std::move(row));
  if (held_.size() == kMeasuredRows) writeHeld();
}

void Table::finish() {
  if (!streaming_) writeHeld();
}

void Table::measure() {
  for (const auto& row : held_) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths_[i] = std::max(widths_[i], std::min(kMaxPadding, text::displayWidth(row[i].text)));
      // A title stands over its column: right only where every value does.
      titles_[i].alignRight = titles_[i].alignRight && row[i].alignRight;
    }
  }
  if (held_.empty()) {
    for (Cell& title : titles_) title.alignRight = false;
  }
}

// The first column stays, however wide it is.
void Table::leaveOutWhatDoesNotFit() {
  std::size_t used = 0;
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    used += widths_[i] + (i > 0 ? kGap.size() : 0);
    if (i > 0 && used > maxWidth_) {
      widths_.resize(i);
      return;
    }
  }
}

void Table::writeHeld() {
  streaming_ = true;
  measure();
  if (maxWidth_ > 0) leaveOutWhatDoesNotFit();
  writeRow(titles_);
  std::vector<Cell> line;
  for (const std::size_t width : widths_) line.push_back({std::string(width, '-'), false});
  writeRow(line);
  for (const auto& row : held_) writeRow(row);
  held_.clear();
  held_.shrink_to_fit();
}

void Table::writeRow(const std::vector<Cell>& row) {
  std::string line;
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    if (i > 0) line += kGap;
    const std::string text = maxWidth_ > 0 ? text::cutTo(row[i].text, widths_[i]) : row[i].text;
    const std::size_t width = text::displayWidth(text);
    const std::size_t padding = widths_[i] > width ? widths_[i] - width : 0;
    if (row[i].alignRight) line.append(padding, ' ');
    line += text;
    const bool last = i + 1 == widths_.size();
    if (!row[i].alignRight && !last) line.append(padding, ' ');
  }
  out_ << line << '\n';
}

}  // namespace tarlo::app
