#pragma once
// The T-SQL printer's inside: one writer that appends to a text, split over files by concern.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast/statement.h"
#include "tsql/parse/precedence.h"

namespace tarlo::tsql {

class TsqlWriter {
 public:
  std::string take() { return std::move(out_); }

  // `least`: how tightly the place binds; what binds looser gets parentheses.
  void expr(const ast::Expr& expr, Level least = kAny);
  void condition(const ast::Condition& condition, Level least = kAny);
  void query(const ast::Query& query);
  void statement(const ast::Statement& statement);

 private:
  void text(std::string_view text) { out_ += text; }
  // [name], closing brackets doubled.
  void name(std::string_view name);
  void names(const std::vector<std::string>& names);
  void quoted(std::string_view value);
  void exprs(const std::vector<ast::Expr>& items);
  void type(std::string_view typeName, const std::vector<int>& sizes);

  void node(const ast::Literal& literal);
  void node(const ast::NullLiteral& null);
  void node(const ast::ColumnRef& column);
  void node(const ast::Variable& variable);
  void node(const ast::Unary& unary);
  void node(const ast::Binary& binary);
  void node(const ast::FunctionCall& call);
  void node(const ast::Cast& cast);
  void node(const ast::SimpleCase& simple);
  void node(const ast::SearchedCase& searched);
  void node(const ast::ScalarSubquery& subquery);

  void node(const ast::Comparison& comparison);
  void node(const ast::Like& like);
  void node(const ast::Between& between);
  void node(const ast::InList& in);
  void node(const ast::InQuery& in);
  void node(const ast::IsNull& isNull);
  void node(const ast::Exists& exists);
  void node(const ast::Not& negation);
  void node(const ast::Logical& logical);

  void node(const ast::Select& select);
  void node(const ast::Insert& insert);
  void node(const ast::Update& update);
  void node(const ast::Delete& remove);
  void node(const ast::CreateTable& create);
  void node(const ast::AddColumn& add);
  void node(const ast::CreateIndex& create);
  void node(const ast::SetOption& set);
  void node(const ast::Declare& declare);
  void node(const ast::Execute& execute);

  void spec(const ast::QuerySpec& spec);
  void item(const ast::SelectItem& item);
  void table(const ast::TableName& table);
  void source(const ast::TableSource& source);
  void fromItem(const ast::FromItem& item);
  void column(const ast::ColumnDefinition& column);
  template <class Items, class Write>
  void list(const Items& items, Write write) {
    bool first = true;
    for (const auto& item : items) {
      if (!first) out_ += ", ";
      first = false;
      write(item);
    }
  }

  std::string out_;
};

}  // namespace tarlo::tsql
