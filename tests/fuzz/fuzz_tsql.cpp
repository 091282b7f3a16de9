// Whatever parses must print to text that parses to the same tree, and the shape must find the
// literals that the lexer finds.
#include <cstdlib>

#include "tsql/error.h"
#include "tsql/lex/lexer.h"
#include "tsql/lex/shape.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"

namespace {

std::size_t literalsOf(std::string_view sql) {
  tarlo::tsql::Lexer lexer(sql);
  std::size_t count = 0;
  for (auto token = lexer.next(); token.kind != tarlo::tsql::TokenKind::End; token = lexer.next()) {
    if (token.isLiteral()) ++count;
  }
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view sql(reinterpret_cast<const char*>(data), size);
  tarlo::tsql::ast::Batch batch;
  try {
    batch = tarlo::tsql::parse(sql);
  } catch (const tarlo::tsql::StatementError&) {
    return 0;
  }
  tarlo::tsql::Shape shape;
  if (!tarlo::tsql::shapeOf(sql, shape) || shape.literals.size() != literalsOf(sql)) std::abort();
  if (!(tarlo::tsql::parse(tarlo::tsql::printTsql(batch)) == batch)) std::abort();
  return 0;
}
