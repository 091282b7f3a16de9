#include "variant/sql_text.h"

#include "variant/text.h"

namespace tarlo::variant {

std::string doubledQuotes(std::string_view text) {
  return replace(text, "'", "''");
}

std::string sqlText(std::string_view text) {
  return "N'" + doubledQuotes(text) + "'";
}

}  // namespace tarlo::variant
