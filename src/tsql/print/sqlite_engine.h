#pragma once
// SQLite's texts. The functions whose names begin with "tsql_" and the collation TSQL are
// registered on every connection by database/sqlite/functions.h; everything else is SQLite's own.
// Texts are equal under that collation, which stands at the left operand; their order is that of
// tsql_sortkey, whose bytes SQLite compares. Other kinds compare as they are, so that an index of
// the column serves.

#include "tsql/print/engine.h"

namespace tarlo::tsql::print {

class SqliteEngine : public Engine {
 public:
  std::string parameter(std::size_t number) const override;
  std::string constant(const ast::Literal& literal, const Parameter& wanted,
                       Position position) const override;
  std::string null(Type) const override { return "NULL"; }

  std::string columnValue(std::string text, const Column&) const override { return text; }
  std::string lastIdentity() const override { return "last_insert_rowid()"; }
  std::string convert(std::string text, Type from, Type to) const override;
  std::string cast(Writer& writer, const ast::Cast& cast, Position position) const override;
  std::string stored(std::string text, const Column&) const override { return text; }
  std::string written(std::string text, Type from, const Column& column) const override;
  std::string unary(ast::UnaryOp op, std::string operand, Type type) const override;
  std::string_view infix(const ast::Expr& binary) const override;
  std::string operation(const ast::Expr& binary, const std::string& left,
                        const std::string& right) const override;
  std::string call(Writer& writer, const ast::Expr& expr) const override;
  std::optional<std::string> groupValue(Writer&, const ast::Expr&) const override { return {}; }

  std::string compared(Writer& writer, const ast::Expr& expr, Use use, Side side) const override;
  std::string like(Writer& writer, const ast::Like& node) const override;
  std::string inList(Writer& writer, const ast::InList& node) const override;
  std::string inQuery(Writer& writer, const ast::InQuery& node) const override;

  std::string selected(Writer& writer, const ast::Expr& expr, bool isCompared) const override;
  std::string comparedItem(const std::string& name, Type type) const override;
  std::string scalarSubquery(const ast::Query& query, std::string text) const override;
  std::string_view crossJoin() const override { return "JOIN"; }
  bool namesDerived() const override { return false; }
  bool needsConstants(ast::JoinKind) const override { return false; }
  std::string paging(const std::string& fetch, const std::string& offset) const override;
  bool comparesOutside(Type) const override { return false; }
  std::string distinctItem(const std::string& name, Type) const override { return name; }
  std::string distinctGroup(const std::string& name, Type) const override { return name; }
  bool sortsByNumber(Type type) const override { return type.kind != Kind::Text; }
  std::string sortKey(std::string text, Type type) const override;
  // NULL comes first as it does for the language.
  std::string direction(bool isDescending, bool) const override {
    return isDescending ? " DESC" : "";
  }
  std::string rowid(const Table& table) const override { return table.hasRowid ? "rowid" : ""; }
  std::string keyOrder(const std::string& name, const Column& column) const override {
    return sortKey(name, column.type);
  }

  std::string newName(const std::string& typed, Position) const override { return typed; }
  std::string columnType(const ast::ColumnDefinition& definition, Type type,
                         bool isKey) const override;
  std::string_view identityType() const override { return "INTEGER PRIMARY KEY AUTOINCREMENT"; }
  std::string_view generatedStorage() const override { return "VIRTUAL"; }
  std::string indexPart(const Column& column, bool isDescending) const override;
  std::string indexedName(const std::string& typed, const std::string&) const override {
    return typed;
  }
  std::string keyIndex(const Table&) const override { return {}; }

  bool mustBeToldIdentities() const override { return false; }
  std::string_view identityOverride() const override { return ""; }
  std::string identityNotice(const Table&, const Column&,
                             const std::vector<std::string>&) const override {
    return {};
  }
  std::string execute(const ast::Execute& execute, const std::vector<std::string>& inputs,
                      Translation& translation) const override;
};

}  // namespace tarlo::tsql::print
