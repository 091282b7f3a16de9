#include "metadata/statement_text.h"

#include "frame/data.h"

namespace tarlo::metadata {

std::string joined(std::initializer_list<std::string_view> pieces) {
  std::size_t size = 0;
  for (std::string_view piece : pieces) size += piece.size();
  std::string text;
  text.reserve(size);
  for (std::string_view piece : pieces) text.append(piece);
  return text;
}

Variant rowsOrNull(Page& page, std::string statement) {
  Variant rows = frame::execSQLRows(page, Variant(std::move(statement)));
  return rows.isArray() ? rows : Variant(variant::Null{});
}

}  // namespace tarlo::metadata
