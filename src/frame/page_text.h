#pragma once
// Page text with holes. The text stands in a file of its own beside the operation that writes it
// and is embedded into the binary. A hole is {{name:place}}: what is given for it goes out in the
// escape of that place (frame/place.h), so that no value can end the attribute, string or element
// that it stands in. {{name:script:attribute}} is a place in a place, from the inside out. A hole
// for a piece that is already written says so: {{rows:built}}, {{form:built:script}}.

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/page.h"
#include "frame/place.h"

namespace tarlo::frame {

class PageText {
 public:
  // Lines of the text end in LF; they go out with CR LF. Throws std::logic_error for a hole that is
  // not closed, names no place or one that there is not.
  explicit PageText(std::string_view text);

  using Hole = std::pair<std::string_view, std::string_view>;
  // Throws std::logic_error when a hole of the text is not given, or a given one is not in the
  // text.
  void write(Response& response, std::initializer_list<Hole> holes = {}) const;
  std::string fill(std::initializer_list<Hole> holes = {}) const;
  std::string fill(std::span<const Hole> holes) const;

  // The names of its holes, each as often as it stands in the text.
  std::vector<std::string_view> holes() const;

 private:
  struct Piece {
    std::string text;           // in front of the hole
    std::string hole;           // "" behind the last one
    std::vector<Place> places;  // from the inside out
  };
  static void readHole(std::string_view words, Piece& piece);

  std::vector<Piece> pieces_;
  std::size_t size_ = 0;
};

}  // namespace tarlo::frame
