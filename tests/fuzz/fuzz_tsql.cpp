// Whatever parses must print to text that parses to the same tree, and the shape must find the
// literals that the lexer finds.
#include <cstdlib>

#include "tsql/error.h"
#include "tsql/lex/lexer.h"
#include "tsql/lex/shape.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"

namespace {

using namespace tarlo::tsql;

std::size_t literalsOf(std::string_view sql) {
  Lexer lexer(sql);
  std::size_t count = 0;
  for (auto token = lexer.next(); token.kind != TokenKind::End; token = lexer.next()) {
    if (token.isLiteral()) ++count;
  }
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view sql(reinterpret_cast<const char*>(data), size);
  ast::Batch batch;
  try {
    batch = parse(sql);
  } catch (const StatementError&) {
    return 0;
  }
  Shape shape;
  if (!shapeOf(sql, shape) || shape.literals.size() != literalsOf(sql)) std::abort();
  if (!(parse(printTsql(batch)) == batch)) std::abort();
  return 0;
}
