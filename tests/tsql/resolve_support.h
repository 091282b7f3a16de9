#pragma once
// Statements against the fixture's tables: what they resolve to, or why they are refused.

#include <string>
#include <string_view>

#include "fixture_catalogue.h"
#include "tsql/error.h"
#include "tsql/parse/parser.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/resolver.h"

namespace tarlo::tsql::testing {

struct ResolvedBatch {
  ast::Batch batch;
  Resolved resolved;
};

inline ResolvedBatch resolveText(std::string_view sql) {
  FixtureCatalogue catalogue;
  ResolvedBatch result{parse(sql), {}};
  result.resolved = resolve(result.batch, catalogue);
  return result;
}

// The message of the refusal, or "accepted".
inline std::string outcomeOf(std::string_view sql) {
  try {
    resolveText(sql);
    return "accepted";
  } catch (const StatementError& error) {
    return error.message();
  }
}

inline std::string nameOf(Type type) {
  if (type.kind == Kind::Decimal) {
    return "dec(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
  }
  for (const auto& [kind, name] :
       {std::pair{Kind::Null, "null"}, std::pair{Kind::Text, "text"}, std::pair{Kind::Int, "int"},
        std::pair{Kind::Float, "float"}, std::pair{Kind::Date, "date"}}) {
    if (type.kind == kind) return name;
  }
  return "?";
}

// "title:type" of every column, separated by one blank; the message of a refusal.
inline std::string columnsOf(std::string_view sql) try {
  std::string all;
  for (const ResultColumn& column : resolveText(sql).resolved.columns) {
    if (!all.empty()) all += ' ';
    all += column.title + ":" + nameOf(column.type);
  }
  return all;
} catch (const StatementError& error) {
  return error.message();
}

inline const ast::Query& queryOf(const ResolvedBatch& result) {
  return std::get<ast::Select>(result.batch.statements.back().node).query;
}

// Texts of the literals that stay in the statement, in the order of the tree.
inline std::string fixedLiterals(const ast::Query& query) {
  std::string all;
  const auto collect = [&](const ast::Expr& expr) {
    const auto* literal = std::get_if<ast::Literal>(&expr.node);
    if (literal && literal->fixed) all += literal->text + " ";
  };
  if (query.parts[0].top) collect(*query.parts[0].top);
  forEachExpr(query, Subqueries::Enter, collect);
  return all;
}

}  // namespace tarlo::tsql::testing
