#include "scheme/title_table.h"

#include "frame/place.h"

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

}  // namespace tarlo::scheme
