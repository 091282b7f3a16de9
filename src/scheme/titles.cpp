#include "scheme/titles.h"

#include "frame/place.h"
#include "text/pieces.h"

namespace tarlo::scheme {

using frame::inPlace;
using frame::Place;

std::string titleRows(const std::vector<std::string>& titles) {
  std::string rows;
  for (std::size_t i = 0; i < titles.size(); i += 2) {
    rows += "<tr><td style=\"padding-left:20\">" + inPlace(Place::Text, titles[i]) + "</td>\r\n";
    const bool isPair = i + 1 < titles.size();
    rows += isPair ? "<td style=\"padding-left:20\">" + inPlace(Place::Text, titles[i + 1]) +
                         "</td></tr>\r\n"
                   : "<td>&nbsp;</td></tr>\r\n";
  }
  return rows;
}

std::vector<std::string> titlesInList(std::string_view statement) {
  constexpr std::size_t kSelect = 7;  // "select "
  const std::size_t from = statement.find(" from ");
  const std::string_view head = statement.substr(0, from);
  const std::string_view list = head.size() > kSelect ? head.substr(kSelect) : std::string_view();
  std::vector<std::string> titles;
  for (const std::string_view item : text::split(list, ",")) {
    const auto parts = text::split(item, " as ");
    if (parts.size() < 2) continue;
    std::string_view title = text::trim(parts.back());
    if (title.size() > 1 && title.front() == '[') title = title.substr(1, title.size() - 2);
    titles.emplace_back(title);
  }
  return titles;
}

}  // namespace tarlo::scheme
