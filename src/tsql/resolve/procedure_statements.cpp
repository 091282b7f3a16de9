// SET, DECLARE and EXEC.

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/resolve/rules.h"
#include "tsql/resolve/type_names.h"

namespace tarlo::tsql {
namespace {

// A literal, a signed one, NULL or a variable.
bool isPlainValue(const ast::Expr& expr) {
  if (const auto* sign = std::get_if<ast::Unary>(&expr.node)) {
    return std::holds_alternative<ast::Literal>(sign->operand->node);
  }
  return std::holds_alternative<ast::Literal>(expr.node) ||
         std::holds_alternative<ast::NullLiteral>(expr.node) ||
         std::holds_alternative<ast::Variable>(expr.node);
}

}  // namespace

void resolveSetOption(BatchContext& batch, const ast::SetOption& option, Position position) {
  if (option.option != "IDENTITY_INSERT") return;
  const Table& table = findTable(batch, Access::Write, {}, option.table, position);
  for (const Column& column : table.columns) {
    if (column.isIdentity) return;
  }
  throw StatementError(Refusal::Rule, position,
                       fmt::format("table {} has no identity column", table.name));
}

void resolveDeclare(BatchContext& batch, const ast::Declare& declare, Position position) {
  const Type type = typeOf(declare.typeName, declare.typeSizes, TypeUse::Declaration, position);
  if (!batch.variables.emplace(text::upperName(declare.variable), type).second) {
    throw StatementError(Refusal::Name, position,
                         fmt::format("variable {} is declared twice", declare.variable));
  }
}

void resolveExecute(BatchContext& batch, ast::Execute& execute) {
  if (!batch.catalogue.hasProcedure(execute.procedure)) {
    throw StatementError(Refusal::Name, execute.position,
                         fmt::format("unknown procedure {}", execute.procedure));
  }
  batch.touched.push_back({Access::Execute, execute.procedure, execute.position});
  const Scope noTables;
  for (ast::Execute::Argument& argument : execute.arguments) {
    const bool isVariable = std::holds_alternative<ast::Variable>(argument.value.node);
    if (!isPlainValue(argument.value) || (argument.out && !isVariable)) {
      throw StatementError(Refusal::Rule, argument.value.position,
                           argument.out ? "an OUT argument must be a variable"
                                        : "an argument of EXEC must be a literal or a variable");
    }
    resolveExpr({batch, noTables, "EXEC"}, argument.value);
  }
}

}  // namespace tarlo::tsql
