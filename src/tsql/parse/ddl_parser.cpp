// CREATE TABLE, CREATE INDEX and ALTER TABLE ... ADD.

#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

// Numbering always begins at 1 and goes up by 1.
void parseIdentitySeed(TokenStream& tokens) {
  if (!tokens.consume(Symbol::OpenParen)) return;
  for (int i = 0; i < 2; ++i) {
    if (i == 1) tokens.expect(Symbol::Comma, ",");
    if (tokens.peek().text != "1") tokens.expected("1");
    tokens.expectFixedInteger("1");
  }
  tokens.expect(Symbol::CloseParen, ")");
}

void parsePrimaryKeyWords(TokenStream& tokens) {
  tokens.expect(Keyword::Primary, "PRIMARY KEY");
  tokens.expect(Keyword::Key, "KEY");
  if (!tokens.consume(Keyword::Clustered)) tokens.consume(Keyword::Nonclustered);
}

// One property behind the type; false when none follows.
bool parseColumnProperty(TokenStream& tokens, ast::ColumnDefinition& column) {
  if (tokens.consume(Keyword::Identity)) {
    parseIdentitySeed(tokens);
    column.identity = true;
    return true;
  }
  if (tokens.consume(Keyword::Null)) return true;
  if (tokens.consume(Keyword::Not)) {
    tokens.expect(Keyword::Null, "NULL");
    column.notNull = true;
    return true;
  }
  const bool named = tokens.consume(Keyword::Constraint);
  if (named) tokens.expectName("the name of a constraint");
  if (tokens.consume(Keyword::Default)) {
    column.defaultValue = parseValue(tokens);
    return true;
  }
  if (tokens.match(Keyword::Primary)) {
    parsePrimaryKeyWords(tokens);
    column.primaryKey = true;
    return true;
  }
  if (named) tokens.expected("DEFAULT or PRIMARY KEY");
  return false;
}

ast::ColumnDefinition parseColumn(TokenStream& tokens) {
  ast::ColumnDefinition column;
  column.position = tokens.position();
  column.name = tokens.expectName("a column");
  if (tokens.consume(Keyword::As)) {
    column.computedAs = parseValue(tokens);
    tokens.consumeWord("PERSISTED");
    return column;
  }
  TypeText type = parseType(tokens);
  column.typeName = std::move(type.name);
  column.typeSizes = std::move(type.sizes);
  while (parseColumnProperty(tokens, column)) {
  }
  return column;
}

void parseTableConstraint(TokenStream& tokens, ast::CreateTable& create) {
  if (tokens.consume(Keyword::Constraint)) tokens.expectName("the name of a constraint");
  if (!create.primaryKey.empty()) tokens.expected("one PRIMARY KEY");
  parsePrimaryKeyWords(tokens);
  create.primaryKey = parseColumnNames(tokens);
}

ast::CreateTable parseCreateTable(TokenStream& tokens) {
  ast::CreateTable create;
  create.table = parseTableName(tokens);
  tokens.expect(Symbol::OpenParen, "( before the columns");
  do {
    if (tokens.match(Keyword::Constraint) || tokens.match(Keyword::Primary)) {
      parseTableConstraint(tokens, create);
    } else {
      create.columns.push_back(parseColumn(tokens));
      tokens.checkListItems(create.columns.size(), "a table");
    }
  } while (tokens.consume(Symbol::Comma));
  if (create.columns.empty()) tokens.expected("a column");
  tokens.expect(Symbol::CloseParen, ", or )");
  return create;
}

ast::CreateIndex parseCreateIndex(TokenStream& tokens, bool unique) {
  ast::CreateIndex create;
  create.unique = unique;
  create.name = tokens.expectName("the name of an index");
  tokens.expect(Keyword::On, "ON");
  create.table = parseTableName(tokens);
  tokens.expect(Symbol::OpenParen, "( before the columns");
  do {
    std::string column = tokens.expectName("a column");
    create.parts.push_back({std::move(column), parseDescending(tokens)});
    tokens.checkListItems(create.parts.size(), "an index");
  } while (tokens.consume(Symbol::Comma));
  tokens.expect(Symbol::CloseParen, ", or )");
  return create;
}

}  // namespace

ast::Statement parseAlter(TokenStream& tokens) {
  const Position start = tokens.take().position;
  tokens.expect(Keyword::Table, "TABLE");
  ast::TableName table = parseTableName(tokens);
  tokens.expect(Keyword::Add, "ADD");
  return {start, ast::AddColumn{std::move(table), parseColumn(tokens)}};
}

ast::Statement parseCreate(TokenStream& tokens) {
  const Position start = tokens.take().position;
  if (tokens.consume(Keyword::Table)) return {start, parseCreateTable(tokens)};
  const bool unique = tokens.consume(Keyword::Unique);
  if (!tokens.consume(Keyword::Clustered)) tokens.consume(Keyword::Nonclustered);
  tokens.expect(Keyword::Index, unique ? "INDEX" : "TABLE or INDEX");
  return {start, parseCreateIndex(tokens, unique)};
}

}  // namespace tarlo::tsql
