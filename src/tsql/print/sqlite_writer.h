#pragma once
// State of one statement while it is printed for SQLite, and the functions that print its parts.
// Every function returns text; expressions come in parentheses or as one term, so that they can be
// put together without regard to precedence.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast/statement.h"
#include "tsql/translation.h"

namespace tarlo::tsql::sqlite {

// Whether literals become parameters or stay in the text.
enum class Literals { Lifted, Inline };

struct PrintedSource {
  std::string alias;             // t1, t2, ...: unique over the statement, so that a name cannot
                                 // reach another scope than the resolver found
  const Table* table = nullptr;  // nothing: a derived table, whose columns are c1, c2, ...
};
using PrintedScope = std::vector<PrintedSource>;

class Writer {
 public:
  Writer(Catalogue& catalogue, Translation& translation, Literals literals)
      : catalogue_(catalogue), translation_(translation), literals_(literals) {}

  // A table that the resolver has found.
  const Table& table(const ast::TableName& name, Position position);
  std::string newAlias();
  // "?N" or, for a fixed literal, its value in the kind of `target`. `column` as in Parameter.
  std::string literal(const ast::Literal& literal, Type target, Position position,
                      const std::string& column = {});
  // Names a literal whose value went into the text without being printed as a value.
  void noteFixed(int ordinal, const std::string& text);
  // Makes a step of what has been printed since the last one.
  Step finishStep(StepRole role, std::string text);

  std::vector<PrintedScope>& scopes() { return scopes_; }
  Literals literals() const { return literals_; }

 private:
  std::string parameter(const Parameter& wanted);

  Catalogue& catalogue_;
  Translation& translation_;
  Literals literals_;
  int aliases_ = 0;
  std::vector<Parameter> parameters_;
  std::vector<PrintedScope> scopes_;
};

// Delimited, quotes inside doubled.
std::string quotedName(std::string_view name);
std::string quotedText(std::string_view text);
// name(a, b, c)
std::string call(std::string_view name, const std::vector<std::string>& arguments);

// sqlite_convert.cpp
std::string convert(std::string text, Type from, Type to);
std::string textOf(std::string text, Type from, int dateStyle = 0);
std::string printCast(Writer& writer, const ast::Cast& cast, Position position);
// The value as the column stores it: rounded, in canonical form, refused when too long.
std::string writtenValue(std::string text, Type from, const Column& column);

// sqlite_expressions.cpp
// The value in the type that its surroundings need; bareValue: in its own type.
std::string value(Writer& writer, const ast::Expr& expr);
std::string bareValue(Writer& writer, const ast::Expr& expr);
// With the collation where it is text: for whatever compares, groups or sorts it.
std::string comparedValue(Writer& writer, const ast::Expr& expr);
std::string collated(std::string text, Type type);
std::string columnValue(Writer& writer, const ast::Expr& expr, const Column& column);

// sqlite_functions.cpp, sqlite_conditions.cpp
std::string printCall(Writer& writer, const ast::FunctionCall& call, const ast::Expr& expr);
bool isAggregate(const ast::FunctionCall& call);
std::string printCondition(Writer& writer, const ast::Condition& condition);

// sqlite_queries.cpp
// Ordered: rows come in the order of the language's own engine (UNION sorted, tables by their key).
enum class RowOrder { Any, Ordered };
std::string printQuery(Writer& writer, const ast::Query& query, RowOrder order);
std::string printScalarSubquery(Writer& writer, const ast::Query& query);

// sqlite_ddl.cpp
std::string printCreateTable(Writer& writer, const ast::CreateTable& create);
std::string printAddColumn(Writer& writer, const ast::AddColumn& add, const Table& table);
std::string printCreateIndex(Writer& writer, const ast::CreateIndex& create);

}  // namespace tarlo::tsql::sqlite
