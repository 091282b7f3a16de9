#pragma once
// The steps of resolving, each over one construct of the tree, bottom up: an expression gets its
// `type`, and the construct round it what is `wanted` of it. A file of this folder holds a family.

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/access.h"
#include "tsql/ast/statement.h"
#include "tsql/catalogue.h"
#include "tsql/resolve/scope.h"

namespace tarlo::tsql {

// One batch: the catalogue, and the declared variables by their upper-case names.
struct BatchContext {
  Catalogue& catalogue;
  std::map<std::string, Type> variables;
  std::vector<Touched> touched;  // in the order of the text
};

// One clause of one query.
struct Context {
  BatchContext& batch;
  const Scope& scope;
  // The clause, where no aggregate may stand in it ("WHERE"); "" where one may.
  std::string_view noAggregatesIn;
  // Set when an aggregate of this query has been met.
  bool* sawAggregate = nullptr;
};

// The table of a statement, noted as touched. Refuses unknown names and schemas other than dbo.
const Table& findTable(BatchContext& batch, Access access, std::string_view schema,
                       std::string_view name, Position position);

void resolveExpr(const Context& context, ast::Expr& expr);
void resolveCondition(const Context& context, ast::Condition& condition);

// `expr` is a FunctionCall or a Cast.
void resolveCall(const Context& context, ast::Expr& expr);
void resolveCast(const Context& context, ast::Expr& expr);

// `expr` is a Unary or Binary whose operands are resolved: sets its type, the operands' wanted
// types and the meaning. A date added to a number is turned round, so that the date is always left.
// Refuses kinds that the operator does not take, and a divisor that is the literal 0.
void resolveUnary(ast::Expr& expr);
void resolveBinary(ast::Expr& expr);

// Nested: a sub-query or derived table, whose rows have no order of their own.
enum class QueryUse { Statement, Nested };
// The clauses in the order in which names become visible, and UNION over several. Titles and types
// of the query's columns. `outer`: the scope of the query round it, or nullptr.
std::vector<ResultColumn> resolveQuery(BatchContext& batch, const Scope* outer, ast::Query& query,
                                       QueryUse use);
// Converts one column of a resolved query, in all its parts.
void wantColumn(ast::Query& query, std::size_t column, Type type,
                std::string_view writtenInto = {});
// Fills the scope from FROM and resolves its ON conditions.
void resolveFrom(BatchContext& batch, ast::QuerySpec& spec, Scope& scope);
// ORDER BY of a query of one part, over its items, then its tables; of a UNION, over its titles.
void resolveOrderBy(const Context& context, ast::Query& query,
                    const std::vector<ResultColumn>& columns);

// A GROUP BY item must hold a column of this query, and no sub-query.
void checkGroupItem(const ast::Expr& item);
// Every column of this query in items, HAVING and ORDER BY must stand in an aggregate or in an
// expression of the GROUP BY list. Keeps all literals of these clauses in the text, because which
// expressions match depends on them.
void checkGrouping(ast::QuerySpec& spec, std::span<ast::OrderItem> orderBy);

// The identity column is named by the INSERT: its table goes into `explicitIdentityOf`.
void resolveInsert(BatchContext& batch, ast::Insert& insert, Position position,
                   std::string& explicitIdentityOf);
void resolveUpdate(BatchContext& batch, ast::Update& update, Position position);
void resolveDelete(BatchContext& batch, ast::Delete& remove, Position position);

void resolveCreateTable(BatchContext& batch, ast::CreateTable& create, Position position);
void resolveAddColumn(BatchContext& batch, ast::AddColumn& add, Position position);
void resolveCreateIndex(BatchContext& batch, const ast::CreateIndex& create, Position position);

void resolveSetOption(BatchContext& batch, const ast::SetOption& option, Position position);
void resolveDeclare(BatchContext& batch, const ast::Declare& declare, Position position);
void resolveExecute(BatchContext& batch, ast::Execute& execute);

}  // namespace tarlo::tsql
