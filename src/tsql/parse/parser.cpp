#include "tsql/parse/parser.h"

#include "tsql/parse/grammar.h"

namespace tarlo::tsql {

ast::Batch parse(std::string_view sql, Deletes deletes) {
  TokenStream tokens(sql);
  ast::Batch batch;
  do {
    const bool isDelete = deletes == Deletes::Known && tokens.match(Keyword::Delete);
    batch.statements.push_back(isDelete ? parseDelete(tokens) : parseStatement(tokens));
    const Token& next = tokens.peek();
    if (next.kind != TokenKind::End && next.symbol != Symbol::Semicolon &&
        !beginsStatement(next.keyword)) {
      tokens.expected("the end of the statement");
    }
    while (tokens.consume(Symbol::Semicolon)) {
    }
    checkBatchForm(batch, tokens.peek().kind == TokenKind::End);
  } while (tokens.peek().kind != TokenKind::End);
  batch.fixedOrdinals = std::move(tokens.fixedOrdinals());
  return batch;
}

}  // namespace tarlo::tsql
