#include "text/sql_text.h"

#include "text/pieces.h"

namespace tarlo::text {

std::string doubledQuotes(std::string_view text) {
  return replace(text, "'", "''");
}

std::string sqlText(std::string_view text) {
  return "N'" + doubledQuotes(text) + "'";
}

}  // namespace tarlo::text
