#pragma once
// One place that knows what hangs below a node, for every walk over a tree: finding aggregates,
// marking literals, comparing expressions, checking groups.

#include <type_traits>

#include "tsql/ast/query.h"

namespace tarlo::tsql {

// Calls `visit` with each direct child of an Expr, in the order of the text: Expr, Condition or
// Query, const where the node is const.
template <class Node, class Visit>
requires std::is_same_v<std::remove_const_t<Node>, ast::Expr>
void forEachChild(Node& expr, Visit&& visit) {
  std::visit(
      [&](auto& node) {
        using T = std::remove_cvref_t<decltype(node)>;
        if constexpr (std::is_same_v<T, ast::Unary> || std::is_same_v<T, ast::Cast>) {
          visit(*node.operand);
        } else if constexpr (std::is_same_v<T, ast::Binary>) {
          visit(*node.left);
          visit(*node.right);
        } else if constexpr (std::is_same_v<T, ast::FunctionCall>) {
          for (auto& argument : node.arguments) visit(argument);
        } else if constexpr (std::is_same_v<T, ast::ScalarSubquery>) {
          visit(*node.query);
        } else if constexpr (std::is_same_v<T, ast::SimpleCase> ||
                             std::is_same_v<T, ast::SearchedCase>) {
          if constexpr (std::is_same_v<T, ast::SimpleCase>) visit(*node.operand);
          for (auto& branch : node.branches) {
            visit(branch.when);
            visit(branch.then);
          }
          if (node.otherwise) visit(**node.otherwise);
        }
      },
      expr.node);
}

template <class Node, class Visit>
requires std::is_same_v<std::remove_const_t<Node>, ast::Condition>
void forEachChild(Node& condition, Visit&& visit) {
  std::visit(
      [&](auto& node) {
        using T = std::remove_cvref_t<decltype(node)>;
        if constexpr (std::is_same_v<T, ast::Comparison> || std::is_same_v<T, ast::Logical>) {
          visit(*node.left);
          visit(*node.right);
        } else if constexpr (std::is_same_v<T, ast::Exists>) {
          visit(*node.query);
        } else {
          visit(*node.operand);
          if constexpr (std::is_same_v<T, ast::Like>) visit(*node.pattern);
          if constexpr (std::is_same_v<T, ast::InQuery>) visit(*node.query);
          if constexpr (std::is_same_v<T, ast::Between>) {
            visit(*node.low);
            visit(*node.high);
          }
          if constexpr (std::is_same_v<T, ast::InList>) {
            for (auto& item : node.items) visit(item);
          }
        }
      },
      condition.node);
}

template <class Source, class Visit>
void visitDerived(Source& source, Visit&& visit) {
  if (auto* derived = std::get_if<ast::DerivedTable>(&source.table)) visit(*derived->query);
}

template <class Node, class Visit>
requires std::is_same_v<std::remove_const_t<Node>, ast::QuerySpec>
void forEachChild(Node& spec, Visit&& visit) {
  for (auto& item : spec.items) {
    if (item.expr) visit(*item.expr);
  }
  for (auto& from : spec.from) {
    visitDerived(from.table, visit);
    for (auto& join : from.joins) {
      visitDerived(join.table, visit);
      if (join.on) visit(*join.on);
    }
  }
  if (spec.where) visit(*spec.where);
  for (auto& expr : spec.groupBy) visit(expr);
  if (spec.having) visit(*spec.having);
}

template <class Node, class Visit>
requires std::is_same_v<std::remove_const_t<Node>, ast::Query>
void forEachChild(Node& query, Visit&& visit) {
  for (auto& part : query.parts) forEachChild(part, visit);
  for (auto& item : query.orderBy) visit(item.expr);
}

// Calls `visit` with every Expr at or below the node; sub-queries only where asked for.
enum class Subqueries { Enter, Skip };
template <class Node, class Visit>
void forEachExpr(Node& node, Subqueries subqueries, Visit& visit) {
  using T = std::remove_const_t<Node>;
  if constexpr (std::is_same_v<T, ast::Query>) {
    if (subqueries == Subqueries::Skip) return;
  }
  if constexpr (std::is_same_v<T, ast::Expr>) visit(node);
  forEachChild(node, [&](auto& child) { forEachExpr(child, subqueries, visit); });
}

// Whether the node holds a query in parentheses.
template <class Node>
bool holdsSubquery(const Node& node) {
  bool found = false;
  forEachChild(node, [&](const auto& child) {
    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(child)>, ast::Query>) {
      found = true;
    } else {
      found = found || holdsSubquery(child);
    }
  });
  return found;
}

// Keeps every literal at or below the node in the text, because its value decides what is printed.
template <class Node>
void fixLiterals(Node& node) {
  const auto fix = [](ast::Expr& expr) {
    if (auto* literal = std::get_if<ast::Literal>(&expr.node)) literal->fixed = true;
  };
  forEachExpr(node, Subqueries::Enter, fix);
}

}  // namespace tarlo::tsql
