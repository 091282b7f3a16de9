#include "frame/page_text.h"

#include <algorithm>
#include <stdexcept>

namespace tarlo::frame {

namespace {

std::string withLineEnds(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 16);
  for (const char c : text) {
    if (c == '\n') out += '\r';
    out += c;
  }
  return out;
}

}  // namespace

PageText::PageText(std::string_view text) {
  for (;;) {
    const auto open = text.find("{{");
    Piece piece{withLineEnds(text.substr(0, open)), {}, {}};
    size_ += piece.text.size();
    if (open == std::string_view::npos) {
      pieces_.push_back(std::move(piece));
      return;
    }
    const auto close = text.find("}}", open);
    if (close == std::string_view::npos)
      throw std::logic_error("a hole of a page text is not closed");
    readHole(text.substr(open + 2, close - open - 2), piece);
    pieces_.push_back(std::move(piece));
    text.remove_prefix(close + 2);
  }
}

// The words of a hole: its name, and the places that it stands in.
void PageText::readHole(std::string_view words, Piece& piece) {
  const std::size_t colon = words.find(':');
  piece.hole = words.substr(0, colon);
  for (std::size_t at = colon; at != std::string_view::npos;) {
    const std::size_t next = words.find(':', at + 1);
    const auto place = placeNamed(words.substr(at + 1, next - at - 1));
    if (!place) throw std::logic_error("no such place of a page text: " + std::string(words));
    piece.places.push_back(*place);
    at = next;
  }
  if (piece.places.empty()) throw std::logic_error("a hole without a place: " + piece.hole);
}

std::vector<std::string_view> PageText::holes() const {
  std::vector<std::string_view> names;
  for (const Piece& piece : pieces_) {
    if (!piece.hole.empty()) names.emplace_back(piece.hole);
  }
  return names;
}

std::string PageText::fill(std::initializer_list<Hole> holes) const {
  return fill(std::span(holes.begin(), holes.size()));
}

std::string PageText::fill(std::span<const Hole> holes) const {
  std::size_t size = size_;
  for (const Hole& given : holes) {
    size += given.second.size();
    const auto isHere = [&](const Piece& piece) { return piece.hole == given.first; };
    if (std::none_of(pieces_.begin(), pieces_.end(), isHere)) {
      throw std::logic_error("the page text has no hole " + std::string(given.first));
    }
  }
  std::string out;
  out.reserve(size);
  for (const Piece& piece : pieces_) {
    out += piece.text;
    if (piece.hole.empty()) continue;
    const auto found = std::find_if(holes.begin(), holes.end(),
                                    [&](const Hole& hole) { return hole.first == piece.hole; });
    if (found == holes.end()) throw std::logic_error("nothing given for the hole " + piece.hole);
    if (piece.places.front() == Place::Built && piece.places.size() == 1) {
      out += found->second;
    } else {
      out += inPlace(piece.places, found->second);
    }
  }
  return out;
}

void PageText::write(Response& response, std::initializer_list<Hole> holes) const {
  response.write(fill(holes));
}

}  // namespace tarlo::frame
