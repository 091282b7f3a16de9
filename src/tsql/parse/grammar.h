#pragma once
// The rules of the grammar, each of which reads what its name says from the front of the tokens. A
// file of this folder holds a family of them.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast/statement.h"
#include "tsql/parse/operand.h"
#include "tsql/parse/precedence.h"

namespace tarlo::tsql {

// F, T.F, dbo.T.F.
ast::ColumnRef parseColumnRef(TokenStream& tokens);
// T or dbo.T, without alias.
ast::TableName parseTableName(TokenStream& tokens);
// (a, b): one name or more in parentheses.
std::vector<std::string> parseColumnNames(TokenStream& tokens);

// A type as CAST, DECLARE and CREATE TABLE write it.
struct TypeText {
  std::string name;        // as typed
  std::vector<int> sizes;  // -1 stands for MAX
};
// int, varchar(50), decimal(18, 2), nvarchar(max). Whether there is such a type is not asked here.
TypeText parseType(TokenStream& tokens);

ast::Expr parseExpression(TokenStream& tokens);
ast::Condition parseCondition(TokenStream& tokens);
// An expression that ends before NOT, IN and the other words that continue a condition.
ast::Expr parseValue(TokenStream& tokens);
// Expressions between commas, at least one; `list` names it in a refusal.
std::vector<ast::Expr> parseExpressions(TokenStream& tokens, std::string_view list);

// An expression or a condition whose operators bind at least as tightly as `least`. `what` is what
// a refusal says was expected where nothing begins.
Operand parseOperand(TokenStream& tokens, Level least, std::string_view what = "an expression");
// What operators stand between: a literal, a name, a call, a CASE, something in parentheses.
Operand parsePrimary(TokenStream& tokens, std::string_view what);
// Function calls, those with a syntax of their own included. The next tokens are a name and an
// opening parenthesis.
Operand parseCall(TokenStream& tokens);
// The next token is CASE.
Operand parseCase(TokenStream& tokens);
// The rest of LIKE, BETWEEN, IN, IS and their negations, the next word being one of them.
bool matchPredicate(TokenStream& tokens);
Operand parsePredicate(TokenStream& tokens, Operand left);

// SELECT, alone or united. The next token is SELECT.
ast::Query parseQuery(TokenStream& tokens);
// The comma list behind FROM.
std::vector<ast::FromItem> parseFrom(TokenStream& tokens);
// ASC or DESC, both optional: whether it is DESC.
bool parseDescending(TokenStream& tokens);

ast::Statement parseStatement(TokenStream& tokens);
// DELETE, which parseStatement does not know.
ast::Statement parseDelete(TokenStream& tokens);
// CREATE TABLE and CREATE INDEX; ALTER TABLE ... ADD. The next token is the verb.
ast::Statement parseCreate(TokenStream& tokens);
ast::Statement parseAlter(TokenStream& tokens);

// Whether a statement begins with this word, so that the one before it may end without a semicolon.
bool beginsStatement(Keyword keyword);
// Refuses the last statement of the batch when it may not stand behind the others: few may share
// one, so that a value that breaks out of its quotes cannot add a statement. `complete`: the text
// ends here, so a batch that wants more is refused too.
void checkBatchForm(const ast::Batch& batch, bool complete);

}  // namespace tarlo::tsql
