// Random trees of every node kind and option, through the T-SQL printer and back. Only trees that a
// parser can make: names without control characters, lists of at least one item.

#include <gtest/gtest.h>

#include <random>

#include "tsql/error.h"
#include "tsql/lex/shape.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"

namespace tarlo::tsql {
namespace {

constexpr int kDeep = 6;

constexpr const char* kNames[] = {
    "a",  "T",  "Zembra_ID", "a.b",    "a]b", "]",   "select", "a b", "标题",   "\"", "'",   "--",
    "/*", "@v", "1",         "年 度]", "OUT", "dbo", " ",      "[x]", "NOLOCK", "ON", "DESC"};
constexpr const char* kTexts[] = {"",   "x",   "it's",         "''",   "--",
                                  "/*", "[a]", "line\r\nline", "标题", " "};
constexpr const char* kFunctions[] = {"LEN",    "LEFT",    "RIGHT", "COALESCE",
                                      "NULLIF", "GETDATE", "F_1"};
constexpr const char* kAggregates[] = {"COUNT", "SUM", "AVG", "MIN", "MAX"};
constexpr const char* kDateFunctions[] = {"DATEPART", "DATENAME", "DATEADD", "DATEDIFF"};

class RandomTree {
 public:
  explicit RandomTree(unsigned seed) : engine_(seed) {}

  ast::Batch batch() {
    if (chance(11)) return group();
    ast::Batch batch;
    batch.statements.push_back({{}, statement()});
    return batch;
  }

 private:
  bool chance(unsigned percent) { return below(100) < percent; }
  std::size_t below(std::size_t bound) { return engine_() % bound; }
  template <class T, std::size_t n>
  const T& oneOf(const T (&items)[n]) {
    return items[below(n)];
  }
  // One of the first `count` values.
  template <class Enum>
  Enum value(std::size_t count) {
    return static_cast<Enum>(below(count));
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
  auto maybe(Make make, unsigned percent = 40) {
    std::optional<decltype(make())> item;
    if (chance(percent)) item = make();
    return item;
  }
  // One node deeper; beyond a bound only leaves are made.
  template <class Make>
  auto deeper(Make make) {
    ++depth_;
    auto made = make();
    --depth_;
    return made;
  }

  std::string name() { return oneOf(kNames); }
  std::string nameOrNone() { return chance(50) ? name() : ""; }
  std::vector<std::string> names() {
    return some([&] { return name(); });
  }
  std::vector<int> sizes() {
    const std::vector<int> all[] = {{-1}, {50}, {18, 2}, {}};
    return oneOf(all);
  }

  ast::Literal literal() {
    using enum ast::LiteralClass;
    const ast::Literal all[] = {{Integer, chance(80) ? "7" : "0x1F"},
                                {Decimal, chance(50) ? ".5" : "5."},
                                {Float, "1e-3"},
                                {Text, oneOf(kTexts)}};
    return oneOf(all);
  }
  ast::ExprNode leaf() {
    const ast::ExprNode all[] = {ast::NullLiteral{},
                                 ast::Variable{chance(50) ? "@v" : "@@IDENTITY"},
                                 literal(),
                                 literal(),
                                 ast::ColumnRef{nameOrNone(), name()},
                                 ast::ColumnRef{"", name()}};
    return oneOf(all);
  }

  ast::ExprNode call() {
    ast::FunctionCall call;
    switch (below(4)) {
      case 0:
        call.name = "COUNT";
        call.star = true;
        break;
      case 1:
        call.name = oneOf(kAggregates);
        call.distinct = chance(40);
        call.arguments.push_back(expr());
        break;
      case 2:
        call.name = oneOf(kDateFunctions);
        call.part = chance(50) ? "yy" : "Day";
        call.arguments = exprs();
        break;
      default:
        call.name = oneOf(kFunctions);
        if (chance(80)) call.arguments = exprs();
    }
    return call;
  }
  template <class Case, class When>
  ast::ExprNode branching(Case node, When when) {
    node.branches = some([&] { return typename Case::Branch{when(), expr()}; });
    node.otherwise = maybe([&] { return ast::Box<ast::Expr>(expr()); });
    return node;
  }
  ast::ExprNode inner() {
    switch (below(8)) {
      case 0:
        return ast::Unary{value<ast::UnaryOp>(3), expr()};
      case 1:
        return call();
      case 2: {
        const bool isConvert = chance(50);
        const int style = isConvert && chance(50) ? 120 : -1;
        return ast::Cast{expr(), name(), sizes(), isConvert, style};
      }
      case 3:
        if (chance(50)) {
          return branching(ast::SimpleCase{expr(), {}, {}}, [&] { return expr(); });
        }
        return branching(ast::SearchedCase{}, [&] { return condition(); });
      case 4:
        return ast::ScalarSubquery{query()};
      default:
        return ast::Binary{value<ast::BinaryOp>(8), expr(), expr()};
    }
  }
  ast::Expr expr() {
    return deeper([&] {
      return ast::Expr{{}, depth_ > kDeep || chance(35) ? leaf() : inner(), {}, {}};
    });
  }
  std::vector<ast::Expr> exprs() {
    return some([&] { return expr(); });
  }

  ast::ConditionNode predicate() {
    const bool negated = chance(50);
    switch (below(depth_ > kDeep ? 5 : 7)) {
      case 0:
        return ast::Like{expr(), expr(), negated};
      case 1:
        return ast::Between{expr(), expr(), expr(), negated, {}};
      case 2:
        return ast::InList{expr(), exprs(), negated, {}};
      case 3:
        return ast::IsNull{expr(), negated};
      case 4:
        return ast::Comparison{value<ast::ComparisonOp>(6), expr(), expr(), {}};
      case 5:
        return ast::InQuery{expr(), query(), negated, {}};
      default:
        return ast::Exists{query()};
    }
  }
  ast::Condition condition() {
    return deeper([&]() -> ast::Condition {
      if (depth_ > kDeep || chance(50)) return {{}, predicate()};
      if (chance(30)) return {{}, ast::Not{condition()}};
      return {{}, ast::Logical{value<ast::LogicOp>(2), condition(), condition()}};
    });
  }

  ast::TableName tableName() { return {chance(30) ? "dbo" : "", name(), ""}; }
  ast::TableSource source() {
    if (depth_ <= kDeep && chance(20)) return {{}, ast::DerivedTable{query(), name()}};
    ast::TableName table = tableName();
    table.alias = nameOrNone();
    return {{}, std::move(table)};
  }
  ast::FromItem fromItem() {
    ast::FromItem item{source(), {}};
    while (item.joins.size() < 3 && chance(30)) {
      ast::Join join{value<ast::JoinKind>(5), source(), {}};
      if (join.kind != ast::JoinKind::Cross) join.on = condition();
      item.joins.push_back(std::move(join));
    }
    return item;
  }
  ast::SelectItem item() {
    if (chance(10)) return {{}, {}, nameOrNone(), ""};
    return {{}, expr(), "", nameOrNone()};
  }
  ast::Expr whole(const char* digits) {
    return {{}, ast::Literal{ast::LiteralClass::Integer, digits}, {}, {}};
  }
  ast::QuerySpec spec() {
    ast::QuerySpec spec;
    spec.distinct = chance(20);
    if (chance(20)) spec.top = whole("5");
    spec.items = some([&] { return item(); });
    if (chance(70)) spec.from = some([&] { return fromItem(); });
    spec.where = maybe([&] { return condition(); });
    if (chance(20)) spec.groupBy = exprs();
    if (chance(20)) spec.having = condition();
    return spec;
  }
  ast::Query query() {
    return deeper([&] {
      ast::Query query;
      query.parts.push_back(spec());
      while (query.parts.size() < 3 && chance(20)) {
        query.ops.push_back(value<ast::SetOp>(2));
        query.parts.push_back(spec());
      }
      if (!chance(30)) return query;
      query.orderBy = some([&] { return ast::OrderItem{expr(), chance(50)}; });
      if (chance(30)) query.offset = whole("20");
      if (query.offset && chance(50)) query.fetch = whole("20");
      return query;
    });
  }

  ast::Insert insert() {
    ast::Insert insert{tableName(), {}, {}, {}};
    if (chance(80)) insert.columns = names();
    if (chance(30)) {
      insert.query = query();
    } else {
      insert.rows = some([&] { return exprs(); });
    }
    return insert;
  }
  ast::Update update() {
    auto assignments = some([&] { return ast::Assignment{{}, name(), expr()}; });
    return {tableName(), std::move(assignments), maybe([&] { return condition(); })};
  }
  ast::ColumnDefinition column() {
    ast::ColumnDefinition column;
    column.name = name();
    if (chance(20)) {
      column.computedAs = expr();
      return column;
    }
    column.typeName = name();
    column.typeSizes = sizes();
    column.identity = chance(20);
    column.notNull = chance(40);
    column.primaryKey = chance(20);
    column.defaultValue = maybe([&] { return expr(); });
    return column;
  }
  ast::Execute execute() {
    ast::Execute execute{{}, name(), {}};
    if (chance(80)) {
      execute.arguments = some([&] { return ast::Execute::Argument{expr(), chance(40)}; });
    }
    return execute;
  }
  decltype(ast::Statement::node) statement() {
    switch (below(8)) {
      case 0:
        return insert();
      case 1:
        return update();
      case 2: {
        ast::CreateTable create{tableName(), some([&] { return column(); }), {}};
        if (chance(30)) create.primaryKey = names();
        return create;
      }
      case 3:
        return ast::CreateIndex{name(), tableName(), chance(50), some([&] {
                                  return ast::CreateIndex::Part{name(), chance(50)};
                                })};
      case 4:
        return ast::SetOption{"IDENTITY_INSERT", name(), chance(50)};
      case 5:
        return execute();
      default:
        return ast::Select{query()};
    }
  }

  // The batches of several statements.
  ast::Batch group() {
    ast::Batch batch;
    const auto add = [&](auto node) { batch.statements.push_back({{}, std::move(node)}); };
    const auto addSelect = [&](ast::ExprNode node) {
      ast::Query query;
      query.parts.emplace_back();
      query.parts[0].items.push_back({{}, ast::Expr{{}, std::move(node), {}, {}}, "", ""});
      add(ast::Select{std::move(query)});
    };
    if (chance(50)) add(ast::SetOption{"NOCOUNT", "", chance(50)});
    if (chance(50)) {
      add(ast::Declare{"@v", name(), sizes()});
      add(execute());
      addSelect(ast::Variable{"@V"});
      return batch;
    }
    add(insert());
    if (chance(35))
      addSelect(ast::Variable{"@@IDENTITY"});
    else if (chance(50))
      addSelect(ast::FunctionCall{"SCOPE_IDENTITY", {}, {}, {}, ""});
    return batch;
  }

  std::mt19937 engine_;
  int depth_ = 0;
};

TEST(RoundTrip, GivesEveryRandomTreeBack) {
  Shape shape;
  for (unsigned seed = 0; seed < 4000; ++seed) {
    const ast::Batch batch = RandomTree(seed).batch();
    const std::string printed = printTsql(batch);
    ASSERT_TRUE(shapeOf(printed, shape)) << seed << ": " << printed;
    try {
      ASSERT_EQ(parse(printed), batch) << seed << ": " << printed;
    } catch (const StatementError& error) {
      FAIL() << seed << ": " << printed << "\n" << error.what();
    }
  }
}

}  // namespace
}  // namespace tarlo::tsql
