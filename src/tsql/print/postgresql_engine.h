#pragma once
// PostgreSQL's texts. Functions of the schema tarlo are those of schema/postgresql.sql; everything
// else is PostgreSQL's own. Texts are equal where tarlo.fold makes them so, and sorted by the
// collation tarlo.chinese; other kinds compare as they are, so that an index of the column serves.
//
// Rows of a table without a key come in no order: nothing in PostgreSQL tells where they came from.
// Branches of UNION ALL come in theirs as long as the server does not run them side by side
// (enable_parallel_append).
// A group, or a row of DISTINCT and UNION, shows of each text the last of its own in the order of
// bytes: small letters rather than capitals. Lengths of columns count characters, where functions
// count UTF-16 units.

#include "tsql/print/engine.h"
#include "tsql/print/postgresql_types.h"

namespace tarlo::tsql::print {

class PostgresqlEngine : public Engine {
 public:
  std::string parameter(std::size_t number) const override;
  std::string constant(const ast::Literal& literal, const Parameter& wanted,
                       Position position) const override;
  std::string null(Type) const override { return "NULL"; }

  std::string columnValue(std::string text, const Column& column) const override;
  std::string lastIdentity() const override { return "lastval()::int4"; }
  std::string convert(std::string text, Type from, Type to) const override;
  std::string cast(Writer& writer, const ast::Cast& cast, Position position) const override;
  std::string stored(std::string text, const Column& column) const override;
  std::string written(std::string text, Type from, const Column& column) const override;
  std::string unary(ast::UnaryOp op, std::string operand, Type type) const override;
  std::string_view infix(const ast::Expr& binary) const override;
  std::string operation(const ast::Expr& binary, const std::string& left,
                        const std::string& right) const override;
  std::string call(Writer& writer, const ast::Expr& expr) const override;
  std::optional<std::string> groupValue(Writer& writer, const ast::Expr& expr) const override;

  std::string compared(Writer& writer, const ast::Expr& expr, Use use, Side side) const override;
  std::string like(Writer& writer, const ast::Like& node) const override;
  std::string inList(Writer& writer, const ast::InList& node) const override;
  std::string inQuery(Writer& writer, const ast::InQuery& node) const override;

  std::string selected(Writer& writer, const ast::Expr& expr, bool isCompared) const override;
  std::string comparedItem(const std::string& name, Type) const override { return name; }
  // A second row is an error by itself.
  std::string scalarSubquery(const ast::Query&, std::string text) const override {
    return "(" + text + ")";
  }
  std::string_view crossJoin() const override { return "CROSS JOIN"; }
  bool namesDerived() const override { return true; }
  // A full join takes conditions that it can hash or merge by, and constants.
  bool needsConstants(ast::JoinKind join) const override { return join == ast::JoinKind::Full; }
  std::string paging(const std::string& fetch, const std::string& offset) const override;
  bool comparesOutside(Type type) const override { return type.kind == Kind::Text; }
  std::string distinctItem(const std::string& name, Type type) const override;
  std::string distinctGroup(const std::string& name, Type type) const override;
  bool sortsByNumber(Type type) const override { return type.kind != Kind::Text; }
  std::string sortKey(std::string text, Type type) const override;
  std::string direction(bool isDescending, bool mayBeNull) const override;
  std::string rowid(const Table&) const override { return {}; }
  std::string keyOrder(const std::string& name, const Column& column) const override;

  std::string newName(const std::string& typed, Position position) const override;
  std::string columnType(const ast::ColumnDefinition& definition, Type type,
                         bool isKey) const override;
  std::string_view identityType() const override;
  std::string_view generatedStorage() const override { return "STORED"; }
  std::string indexPart(const Column& column, bool isDescending) const override;
  std::string indexedName(const std::string&, const std::string& found) const override {
    return found;
  }
  std::string keyIndex(const Table& table) const override;

  bool mustBeToldIdentities() const override { return true; }
  // Columns of other programs may be numbered always.
  std::string_view identityOverride() const override { return " OVERRIDING SYSTEM VALUE"; }
  std::string identityNotice(const Table& table, const Column& column,
                             const std::vector<std::string>& stored) const override;
  std::string execute(const ast::Execute& execute, const std::vector<std::string>& inputs,
                      Translation& translation) const override;
};

// postgresql_dates.cpp
std::string postgresqlDateText(const std::string& date, int style);
// `call` is a function of dates; its arguments are printed. "" when it is none.
std::string postgresqlDateCall(const ast::FunctionCall& call,
                               const std::vector<std::string>& arguments);
// A date and a number of days.
std::string postgresqlDatePlus(const std::string& date, const std::string& days, Kind kind);

}  // namespace tarlo::tsql::print
