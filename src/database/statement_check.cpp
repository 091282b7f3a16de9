#include "database/statement_check.h"

#include "tsql/parse/parser.h"
#include "tsql/resolve/resolver.h"

namespace tarlo::database {
namespace {

Fault faultOf(tsql::Refusal refusal) {
  switch (refusal) {
    case tsql::Refusal::Syntax:
      return Fault::Syntax;
    case tsql::Refusal::Limit:
      return Fault::Limit;
    case tsql::Refusal::Name:
      return Fault::Name;
    case tsql::Refusal::Kind:
      return Fault::Kind;
    case tsql::Refusal::Rule:
      return Fault::Rule;
    case tsql::Refusal::Forbidden:
      return Fault::Forbidden;
    case tsql::Refusal::Unsupported:
      break;
  }
  return Fault::Unsupported;
}

}  // namespace

StatementCheck checkText(Connection& connection, std::string_view sql) {
  try {
    tsql::ast::Batch batch = tsql::parse(sql);
    tsql::resolve(batch, connection.catalogue());
    return {};
  } catch (const tsql::StatementError& error) {
    return {faultOf(error.refusal()), error.position().offset};
  }
}

StatementCheck checkRun(Connection& connection, std::string_view sql) {
  const StatementCheck check = checkText(connection, sql);
  if (check.fault != Fault::None) return check;
  try {
    connection.execute(sql);
    return {};
  } catch (const DatabaseError& error) {
    if (error.number() == kForbidden) return {Fault::Forbidden, 0};
    return {error.number() == kTimeout ? Fault::Time : Fault::Running, 0};
  }
}

}  // namespace tarlo::database
