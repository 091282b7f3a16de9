#pragma once
// Page text with holes. The text stands in a file of its own beside the operation that writes it
// and is embedded into the binary; a hole is {{name}} and is filled as it is: nothing is escaped
// here, since the pages' texts decide that.

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/page.h"

namespace tarlo::frame {

class Template {
 public:
  // Lines of the text end in LF; they go out with CR LF. Throws std::logic_error for a hole that is
  // not closed.
  explicit Template(std::string_view text);

  using Hole = std::pair<std::string_view, std::string_view>;
  // Throws std::logic_error when a hole of the text is not given, or a given one is not in the
  // text.
  void write(Response& response, std::initializer_list<Hole> holes = {}) const;
  std::string fill(std::initializer_list<Hole> holes = {}) const;

 private:
  struct Piece {
    std::string text;  // in front of the hole
    std::string hole;  // "" behind the last one
  };
  std::vector<Piece> pieces_;
  std::size_t size_ = 0;
};

}  // namespace tarlo::frame
