#include "tsql/random_tree.h"

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

class Deeper {
 public:
  explicit Deeper(int& depth) : depth_(depth) { ++depth_; }
  ~Deeper() { --depth_; }

 private:
  int& depth_;
};

}  // namespace

std::string RandomTree::name() {
  return oneOf(kNames);
}

std::vector<std::string> RandomTree::names() {
  return some([&] { return name(); });
}

std::vector<int> RandomTree::sizes() {
  switch (below(4)) {
    case 0:
      return {-1};
    case 1:
      return {50};
    case 2:
      return {18, 2};
    default:
      return {};
  }
}

ast::Literal RandomTree::literal() {
  switch (below(4)) {
    case 0:
      return {ast::LiteralClass::Integer, chance(80) ? "7" : "0x1F"};
    case 1:
      return {ast::LiteralClass::Decimal, chance(50) ? ".5" : "5."};
    case 2:
      return {ast::LiteralClass::Float, "1e-3"};
    default:
      return {ast::LiteralClass::Text, oneOf(kTexts)};
  }
}

ast::ExprNode RandomTree::leaf() {
  switch (below(6)) {
    case 0:
      return ast::NullLiteral{};
    case 1:
      return ast::Variable{chance(50) ? "@v" : "@@IDENTITY"};
    case 2:
    case 3:
      return literal();
    default:
      return ast::ColumnRef{chance(50) ? name() : "", name()};
  }
}

ast::ExprNode RandomTree::call() {
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

ast::ExprNode RandomTree::branching() {
  const auto otherwise = [&] { return ast::Box<ast::Expr>(expr()); };
  if (chance(50)) {
    ast::SimpleCase simple{expr(), {}, {}};
    simple.branches = some([&] { return ast::SimpleCase::Branch{expr(), expr()}; });
    simple.otherwise = maybe(otherwise);
    return simple;
  }
  ast::SearchedCase searched;
  searched.branches = some([&] { return ast::SearchedCase::Branch{condition(), expr()}; });
  searched.otherwise = maybe(otherwise);
  return searched;
}

ast::ExprNode RandomTree::inner() {
  switch (below(8)) {
    case 0:
      return ast::Unary{static_cast<ast::UnaryOp>(below(3)), expr()};
    case 1:
      return call();
    case 2: {
      const bool isConvert = chance(50);
      const int style = isConvert && chance(50) ? 120 : -1;
      return ast::Cast{expr(), name(), sizes(), isConvert, style};
    }
    case 3:
      return branching();
    case 4:
      return ast::ScalarSubquery{query()};
    default:
      return ast::Binary{static_cast<ast::BinaryOp>(below(8)), expr(), expr()};
  }
}

ast::Expr RandomTree::expr() {
  const Deeper deeper(depth_);
  return {{}, depth_ > kDeep || chance(35) ? leaf() : inner(), {}, {}};
}

std::vector<ast::Expr> RandomTree::exprs() {
  return some([&] { return expr(); });
}

ast::ConditionNode RandomTree::predicate() {
  const bool negated = chance(50);
  switch (below(7)) {
    case 0:
      return ast::Like{expr(), expr(), negated};
    case 1:
      return ast::Between{expr(), expr(), expr(), negated, {}};
    case 2:
      return ast::InList{expr(), exprs(), negated, {}};
    case 3:
      if (depth_ <= kDeep) return ast::InQuery{expr(), query(), negated, {}};
      [[fallthrough]];
    case 4:
      if (depth_ <= kDeep) return ast::Exists{query()};
      [[fallthrough]];
    case 5:
      return ast::IsNull{expr(), negated};
    default:
      return ast::Comparison{static_cast<ast::ComparisonOp>(below(6)), expr(), expr(), {}};
  }
}

ast::Condition RandomTree::condition() {
  const Deeper deeper(depth_);
  if (depth_ > kDeep || chance(50)) return {{}, predicate()};
  if (chance(30)) return {{}, ast::Not{condition()}};
  return {{}, ast::Logical{static_cast<ast::LogicOp>(below(2)), condition(), condition()}};
}

ast::TableName RandomTree::tableName() {
  return {chance(30) ? "dbo" : "", name(), ""};
}

ast::TableSource RandomTree::source() {
  if (depth_ <= kDeep && chance(20)) return {{}, ast::DerivedTable{query(), name()}};
  ast::TableName table = tableName();
  if (chance(50)) table.alias = name();
  return {{}, std::move(table)};
}

ast::FromItem RandomTree::fromItem() {
  ast::FromItem item{source(), {}};
  while (item.joins.size() < 3 && chance(30)) {
    ast::Join join{static_cast<ast::JoinKind>(below(5)), source(), {}};
    if (join.kind != ast::JoinKind::Cross) join.on = condition();
    item.joins.push_back(std::move(join));
  }
  return item;
}

ast::SelectItem RandomTree::item() {
  ast::SelectItem item;
  if (chance(10)) {
    if (chance(50)) item.starTable = name();
    return item;
  }
  item.expr = expr();
  if (chance(50)) item.alias = name();
  return item;
}

ast::QuerySpec RandomTree::spec() {
  ast::QuerySpec spec;
  spec.distinct = chance(20);
  if (chance(20)) {
    spec.top = ast::Expr{{}, ast::Literal{ast::LiteralClass::Integer, "5"}, {}, {}};
  }
  spec.items = some([&] { return item(); });
  if (chance(70)) spec.from = some([&] { return fromItem(); });
  spec.where = maybe([&] { return condition(); });
  if (chance(20)) spec.groupBy = exprs();
  if (chance(20)) spec.having = condition();
  return spec;
}

ast::Query RandomTree::query() {
  const Deeper deeper(depth_);
  ast::Query query;
  query.parts.push_back(spec());
  while (query.parts.size() < 3 && chance(20)) {
    query.ops.push_back(static_cast<ast::SetOp>(below(2)));
    query.parts.push_back(spec());
  }
  if (!chance(30)) return query;
  query.orderBy = some([&] { return ast::OrderItem{expr(), chance(50)}; });
  const auto count = [] { return ast::Expr{{}, ast::Literal{{}, "20"}, {}, {}}; };
  if (chance(30)) query.offset = count();
  if (query.offset && chance(50)) query.fetch = count();
  return query;
}

ast::Insert RandomTree::insert() {
  ast::Insert insert{tableName(), {}, {}, {}};
  if (chance(80)) insert.columns = names();
  if (chance(30)) {
    insert.query = query();
  } else {
    insert.rows = some([&] { return exprs(); });
  }
  return insert;
}

ast::Update RandomTree::update() {
  return {tableName(), some([&] {
            return ast::Assignment{{}, name(), expr()};
          }),
          maybe([&] { return condition(); })};
}

ast::ColumnDefinition RandomTree::column() {
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

ast::CreateTable RandomTree::createTable() {
  ast::CreateTable create{tableName(), some([&] { return column(); }), {}};
  if (chance(30)) create.primaryKey = names();
  return create;
}

ast::CreateIndex RandomTree::createIndex() {
  return {name(), tableName(), chance(50), some([&] {
            return ast::CreateIndex::Part{name(), chance(50)};
          })};
}

ast::Execute RandomTree::execute() {
  ast::Execute execute{{}, name(), {}};
  if (chance(80))
    execute.arguments = some([&] { return ast::Execute::Argument{expr(), chance(40)}; });
  return execute;
}

ast::Statement RandomTree::only(ast::ExprNode node) {
  ast::Query query;
  query.parts.emplace_back();
  query.parts[0].items.push_back({{}, ast::Expr{{}, std::move(node), {}, {}}, "", ""});
  return {{}, ast::Select{std::move(query)}};
}

// The batches of several statements.
void RandomTree::addGroup(ast::Batch& batch) {
  if (chance(50)) batch.statements.push_back({{}, ast::SetOption{"NOCOUNT", "", chance(50)}});
  if (chance(50)) {
    batch.statements.push_back({{}, insert()});
    if (chance(30)) return;
    batch.statements.push_back(only(chance(50)
                                        ? ast::ExprNode(ast::Variable{"@@IDENTITY"})
                                        : ast::FunctionCall{"SCOPE_IDENTITY", {}, {}, {}, ""}));
    return;
  }
  batch.statements.push_back({{}, ast::Declare{"@v", name(), sizes()}});
  batch.statements.push_back({{}, execute()});
  batch.statements.push_back(only(ast::Variable{"@V"}));
}

ast::Batch RandomTree::batch() {
  ast::Batch batch;
  switch (below(9)) {
    case 0:
      batch.statements.push_back({{}, insert()});
      break;
    case 1:
      batch.statements.push_back({{}, update()});
      break;
    case 2:
      batch.statements.push_back({{}, createTable()});
      break;
    case 3:
      batch.statements.push_back({{}, createIndex()});
      break;
    case 4:
      batch.statements.push_back({{}, ast::SetOption{"IDENTITY_INSERT", name(), chance(50)}});
      break;
    case 5:
      batch.statements.push_back({{}, execute()});
      break;
    case 6:
      addGroup(batch);
      break;
    default:
      batch.statements.push_back({{}, ast::Select{query()}});
  }
  return batch;
}

}  // namespace tarlo::tsql
