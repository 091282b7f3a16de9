#include "scheme/reduction.h"

#include "text/pieces.h"

namespace tarlo::scheme {
namespace {

std::string reducedExpression(std::string_view expression) {
  std::string output;
  for (const std::string_view piece : text::split(expression, "]")) {
    for (const std::string_view part : text::split(piece, "[")) {
      const std::size_t bar = part.find('|');
      if (bar == std::string_view::npos) {
        output += part;
      } else {
        output.append("[").append(part.substr(bar + 1));
      }
    }
    output += ']';
  }
  if (output.ends_with(']')) output.pop_back();
  return output;
}

}  // namespace

std::string reducedComputed(std::string_view posted) {
  std::string text = text::replace(text::replace(posted, "‘", "'"), "’", "'");
  std::string result;
  for (const std::string_view item : text::split(text, ";")) {
    const std::size_t colon = item.find(':');
    const std::size_t head = colon == std::string_view::npos ? 0 : colon + 1;
    result.append(item.substr(0, head)).append(reducedExpression(item.substr(head))).append(";");
  }
  if (result.ends_with(';')) result.pop_back();
  return result;
}

}  // namespace tarlo::scheme
