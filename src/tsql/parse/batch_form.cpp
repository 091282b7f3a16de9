// Which statements may share a batch.

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

using ast::Statement;

template <class T>
const T* as(const Statement& statement) {
  return std::get_if<T>(&statement.node);
}

bool isNocount(const Statement& statement) {
  const auto* set = as<ast::SetOption>(statement);
  return set != nullptr && set->option == "NOCOUNT";
}

// The one item of a SELECT that has nothing but it.
const ast::Expr* onlyItem(const Statement& statement) {
  const auto* select = as<ast::Select>(statement);
  if (select == nullptr || select->query.parts.size() != 1 || !select->query.orderBy.empty()) {
    return nullptr;
  }
  const ast::QuerySpec& spec = select->query.parts[0];
  const bool isPlain = spec.items.size() == 1 && spec.from.empty() && !spec.where && !spec.having &&
                       spec.groupBy.empty() && !spec.top && !spec.distinct;
  return isPlain && spec.items[0].expr ? &*spec.items[0].expr : nullptr;
}

bool selectsIdentity(const Statement& statement) {
  const ast::Expr* item = onlyItem(statement);
  if (item == nullptr) return false;
  if (const auto* variable = std::get_if<ast::Variable>(&item->node)) {
    return text::equalsNoCase(variable->name, "@@IDENTITY");
  }
  const auto* call = std::get_if<ast::FunctionCall>(&item->node);
  return call != nullptr && call->name == "SCOPE_IDENTITY" && call->arguments.empty();
}

bool selectsVariable(const Statement& statement, const std::string& name) {
  const ast::Expr* item = onlyItem(statement);
  const auto* variable = item == nullptr ? nullptr : std::get_if<ast::Variable>(&item->node);
  return variable != nullptr && text::equalsNoCase(variable->name, name);
}

[[noreturn]] void refuse(const Statement& statement, std::string_view expected) {
  throw StatementError(Refusal::Syntax, statement.position,
                       "expected " + std::string(expected) + ", found another statement");
}

// `at` is the number of the statement behind a SET NOCOUNT.
void checkFollower(const std::vector<Statement>& statements, std::size_t first, std::size_t at) {
  const Statement& statement = statements[first + at];
  const Statement& opening = statements[first];
  if (as<ast::Insert>(opening) != nullptr && at == 1) {
    if (!selectsIdentity(statement)) refuse(statement, "the SELECT of the identity");
    return;
  }
  const auto* declare = as<ast::Declare>(opening);
  if (declare == nullptr || at > 2) refuse(statement, "the end of the statement");
  if (at == 1) {
    if (as<ast::Execute>(statement) == nullptr) refuse(statement, "EXEC behind DECLARE");
  } else if (!selectsVariable(statement, declare->variable)) {
    refuse(statement, "the SELECT of the declared variable");
  }
}

}  // namespace

bool beginsStatement(Keyword keyword) {
  switch (keyword) {
    case Keyword::Select:
    case Keyword::Insert:
    case Keyword::Update:
    case Keyword::Create:
    case Keyword::Set:
    case Keyword::Declare:
    case Keyword::Exec:
    case Keyword::Execute:
      return true;
    default:
      return false;
  }
}

void checkBatchForm(const ast::Batch& batch, bool complete) {
  const std::vector<Statement>& statements = batch.statements;
  const std::size_t first = statements.size() > 1 && isNocount(statements[0]) ? 1 : 0;
  const std::size_t count = statements.size() - first;
  const bool isGroup = as<ast::Insert>(statements[first]) != nullptr ||
                       as<ast::Declare>(statements[first]) != nullptr;
  if (first == 1 && count == 1 && !isGroup) {
    refuse(statements[1], "INSERT or DECLARE behind SET NOCOUNT");
  }
  if (count > 1) checkFollower(statements, first, count - 1);
  if (complete && as<ast::Declare>(statements[first]) != nullptr && count != 3) {
    throw StatementError(Refusal::Syntax, statements.back().position,
                         "expected DECLARE, EXEC and SELECT together in one batch");
  }
}

}  // namespace tarlo::tsql
