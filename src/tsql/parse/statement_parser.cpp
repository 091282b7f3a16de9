// The statements but those that define tables.

#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

void parseRows(TokenStream& tokens, ast::Insert& insert) {
  do {
    tokens.expect(Symbol::OpenParen, "( before the values");
    const Nesting nesting(tokens);
    insert.rows.push_back(parseExpressions(tokens, "VALUES"));
    tokens.expect(Symbol::CloseParen, ", or )");
    tokens.checkListItems(insert.rows.size(), "VALUES");
  } while (tokens.consume(Symbol::Comma));
}

ast::Insert parseInsert(TokenStream& tokens) {
  tokens.take();
  tokens.consume(Keyword::Into);
  ast::Insert insert;
  insert.table = parseTableName(tokens);
  if (tokens.match(Symbol::OpenParen)) insert.columns = parseColumnNames(tokens);
  if (tokens.consume(Keyword::Values)) {
    parseRows(tokens, insert);
  } else if (tokens.match(Keyword::Select)) {
    insert.query = parseQuery(tokens);
  } else {
    tokens.expected("VALUES or SELECT");
  }
  return insert;
}

ast::Update parseUpdate(TokenStream& tokens) {
  tokens.take();
  ast::Update update;
  update.table = parseTableName(tokens);
  tokens.expect(Keyword::Set, "SET");
  do {
    const Position start = tokens.position();
    std::string column = tokens.expectName("a column");
    tokens.expect(Symbol::Equal, "=");
    update.assignments.push_back({start, std::move(column), parseExpression(tokens)});
    tokens.checkListItems(update.assignments.size(), "SET");
  } while (tokens.consume(Symbol::Comma));
  if (tokens.consume(Keyword::Where)) update.where = parseCondition(tokens);
  return update;
}

bool parseOnOff(TokenStream& tokens) {
  if (tokens.consume(Keyword::On)) return true;
  tokens.expect(Keyword::Off, "ON or OFF");
  return false;
}

ast::SetOption parseSet(TokenStream& tokens) {
  tokens.take();
  if (tokens.consumeWord("NOCOUNT")) return {"NOCOUNT", "", parseOnOff(tokens)};
  tokens.expect(Keyword::IdentityInsert, "NOCOUNT or IDENTITY_INSERT");
  std::string table = parseTableName(tokens).name;
  return {"IDENTITY_INSERT", std::move(table), parseOnOff(tokens)};
}

ast::Declare parseDeclare(TokenStream& tokens) {
  tokens.take();
  if (tokens.peek().kind != TokenKind::Variable) tokens.expected("a variable");
  std::string variable = tokens.take().value();
  tokens.consume(Keyword::As);
  TypeText type = parseType(tokens);
  return {std::move(variable), std::move(type.name), std::move(type.sizes)};
}

ast::Execute parseExecute(TokenStream& tokens) {
  tokens.take();
  ast::Execute execute;
  execute.position = tokens.position();
  if (!tokens.peek().isName()) tokens.expected("a procedure");
  execute.procedure = parseTableName(tokens).name;
  const Token& next = tokens.peek();
  if (next.kind == TokenKind::End || next.symbol == Symbol::Semicolon) return execute;
  do {
    ast::Expr value = parseExpression(tokens);
    const bool out = tokens.consumeWord("OUT") || tokens.consumeWord("OUTPUT");
    execute.arguments.push_back({std::move(value), out});
    tokens.checkListItems(execute.arguments.size(), "EXEC");
  } while (tokens.consume(Symbol::Comma));
  return execute;
}

}  // namespace

ast::Statement parseDelete(TokenStream& tokens) {
  const Position start = tokens.take().position;
  tokens.consume(Keyword::From);
  ast::TableName table = parseTableName(tokens);
  tokens.expect(Keyword::Where, "WHERE");
  return {start, ast::Delete{std::move(table), parseCondition(tokens)}};
}

ast::Statement parseStatement(TokenStream& tokens) {
  const Position start = tokens.position();
  switch (tokens.peek().keyword) {
    case Keyword::Select:
      return {start, ast::Select{parseQuery(tokens)}};
    case Keyword::Insert:
      return {start, parseInsert(tokens)};
    case Keyword::Update:
      return {start, parseUpdate(tokens)};
    case Keyword::Create:
      return parseCreate(tokens);
    case Keyword::Alter:
      return parseAlter(tokens);
    case Keyword::Set:
      return {start, parseSet(tokens)};
    case Keyword::Declare:
      return {start, parseDeclare(tokens)};
    case Keyword::Exec:
    case Keyword::Execute:
      return {start, parseExecute(tokens)};
    default:
      tokens.expected("SELECT, INSERT, UPDATE, CREATE, SET, DECLARE or EXEC");
  }
}

}  // namespace tarlo::tsql
