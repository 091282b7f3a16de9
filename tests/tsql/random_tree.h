#pragma once
// Random trees of every node kind and option, for the round trip through the T-SQL printer. Only
// trees that a parser can make: names without control characters, lists of at least one item.

#include <random>
#include <string>

#include "tsql/ast/statement.h"

namespace tarlo::tsql {

class RandomTree {
 public:
  explicit RandomTree(unsigned seed) : engine_(seed) {}

  ast::Batch batch();

 private:
  bool chance(unsigned percent) { return below(100) < percent; }
  std::size_t below(std::size_t bound) { return engine_() % bound; }
  template <class T, std::size_t n>
  const T& oneOf(const T (&items)[n]) {
    return items[below(n)];
  }
  template <class Make>
  auto some(Make make) {
    std::vector<decltype(make())> items;
    do items.push_back(make());
    while (items.size() < 4 && chance(40));
    return items;
  }
  // Something that may be missing.
  template <class Make>
  auto maybe(Make make) {
    std::optional<decltype(make())> item;
    if (chance(40)) item = make();
    return item;
  }

  std::string name();
  std::vector<std::string> names();
  std::vector<int> sizes();
  ast::Literal literal();
  ast::ExprNode leaf();
  ast::ExprNode call();
  ast::ExprNode branching();
  ast::ExprNode inner();
  ast::Expr expr();
  std::vector<ast::Expr> exprs();
  ast::ConditionNode predicate();
  ast::Condition condition();

  ast::TableName tableName();
  ast::TableSource source();
  ast::FromItem fromItem();
  ast::SelectItem item();
  ast::QuerySpec spec();
  ast::Query query();

  ast::Insert insert();
  ast::ColumnDefinition column();
  ast::CreateTable createTable();
  ast::CreateIndex createIndex();
  ast::Update update();
  ast::Execute execute();
  ast::Statement only(ast::ExprNode node);
  void addGroup(ast::Batch& batch);

  std::mt19937 engine_;
  int depth_ = 0;  // of nodes round the one being made; beyond a bound only leaves are made
};

}  // namespace tarlo::tsql
