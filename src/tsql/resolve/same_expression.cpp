// Comparison of resolved expressions, blind to how their names are written.

#include "text/fold.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/date_parts.h"
#include "tsql/resolve/resolver.h"
#include "tsql/resolve/type_names.h"

namespace tarlo::tsql {
namespace {

using Child = std::variant<const ast::Expr*, const ast::Condition*, const ast::Query*>;

template <class Node>
std::vector<Child> childrenOf(const Node& node) {
  std::vector<Child> children;
  forEachChild(node, [&](const auto& child) { children.emplace_back(&child); });
  return children;
}

bool same(const ast::Condition& a, const ast::Condition& b);
bool same(const ast::Expr& a, const ast::Expr& b) {
  return sameExpression(a, b);
}
// Sub-queries must be written alike.
bool same(const ast::Query& a, const ast::Query& b) {
  return a == b;
}

template <class Node>
bool sameChildren(const Node& a, const Node& b) {
  const auto left = childrenOf(a);
  const auto right = childrenOf(b);
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](const Child& x, const Child& y) {
                      return std::visit(
                          [](const auto* p, const auto* q) {
                            if constexpr (std::is_same_v<decltype(p), decltype(q)>) {
                              return same(*p, *q);
                            } else {
                              return false;
                            }
                          },
                          x, y);
                    });
}

// What two nodes of one type hold besides their children.
struct SameNode {
  bool operator()(const ast::Literal& a, const ast::Literal& b) const { return a == b; }
  bool operator()(const ast::ColumnRef& a, const ast::ColumnRef& b) const {
    return a.level == b.level && a.source == b.source && a.column == b.column;
  }
  bool operator()(const ast::Variable& a, const ast::Variable& b) const {
    return text::equalsNoCase(a.name, b.name);
  }
  bool operator()(const ast::Unary& a, const ast::Unary& b) const { return a.op == b.op; }
  bool operator()(const ast::Binary& a, const ast::Binary& b) const { return a.op == b.op; }
  bool operator()(const ast::FunctionCall& a, const ast::FunctionCall& b) const {
    return a.name == b.name && a.star == b.star && a.distinct == b.distinct &&
           findDatePart(a.part) == findDatePart(b.part);
  }
  bool operator()(const ast::Cast& a, const ast::Cast& b) const {
    return findTypeName(a.typeName) == findTypeName(b.typeName) && a.typeSizes == b.typeSizes &&
           a.isConvert == b.isConvert && a.style == b.style;
  }
  bool operator()(const ast::Comparison& a, const ast::Comparison& b) const { return a.op == b.op; }
  bool operator()(const ast::Logical& a, const ast::Logical& b) const { return a.op == b.op; }
  template <class T>
  bool operator()(const T& a, const T& b) const {
    if constexpr (requires { a.negated; }) {
      return a.negated == b.negated;
    } else if constexpr (requires { a.otherwise; }) {
      return a.otherwise.has_value() == b.otherwise.has_value();
    } else {
      return true;
    }
  }
};

template <class Node>
bool sameNode(const Node& a, const Node& b) {
  return a.index() == b.index() &&
         std::visit(
             [&](const auto& left) {
               return SameNode{}(left, std::get<std::remove_cvref_t<decltype(left)>>(b));
             },
             a);
}

bool same(const ast::Condition& a, const ast::Condition& b) {
  return sameNode(a.node, b.node) && sameChildren(a, b);
}

}  // namespace

bool sameExpression(const ast::Expr& a, const ast::Expr& b) {
  return sameNode(a.node, b.node) && sameChildren(a, b);
}

}  // namespace tarlo::tsql
