#pragma once
// The walk over a resolved tree, the same for every engine.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast/statement.h"
#include "tsql/print/engine.h"
#include "tsql/print/writer.h"

namespace tarlo::tsql::print {

// Delimited, quotes inside doubled.
std::string quotedName(std::string_view name);
// In single quotes, those inside doubled.
std::string quoted(std::string_view text);
// name(a, b, c)
std::string call(std::string_view name, const std::vector<std::string>& arguments);

// The type that the place of the expression wants, which is its own where nothing is wanted.
Type wantedType(const ast::Expr& expr);

// expressions.cpp
// The value in the type that its surroundings need; bareValue: in its own type.
std::string value(Writer& writer, const ast::Expr& expr);
std::string bareValue(Writer& writer, const ast::Expr& expr);
std::string writtenValue(Writer& writer, const ast::Expr& expr, const Column& column);
std::vector<std::string> values(Writer& writer, const std::vector<ast::Expr>& exprs);
// `+`, `||` and the like where the engines agree on them, else "".
std::string_view commonInfix(const ast::Binary& node);
// CONCAT: NULL counts as the empty text.
std::string concatenation(const std::vector<std::string>& texts);
bool isAggregate(const ast::Expr& expr);

// conditions.cpp
std::string printCondition(Writer& writer, const ast::Condition& condition);
std::string_view negation(bool isNegated);  // " NOT" or ""

// queries.cpp
// Ordered: rows come in the order of the language's own engine (UNION sorted, tables by their key).
enum class RowOrder { Any, Ordered };
std::string printQuery(Writer& writer, const ast::Query& query, RowOrder order);
bool givesOneRow(const ast::Query& query);

// definitions.cpp
std::string printCreateTable(Writer& writer, const ast::CreateTable& create);
// The index that the key of the table needs beside itself, or "".
std::string printKeyIndex(Writer& writer, const ast::CreateTable& create);
std::string printAddColumn(Writer& writer, const ast::AddColumn& add, const Table& table);
std::string printCreateIndex(Writer& writer, const ast::CreateIndex& create, const Table& table);

}  // namespace tarlo::tsql::print
