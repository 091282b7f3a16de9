#pragma once
// What differs between engines in the text that they are given. The walk over the tree stands once,
// in printing.h; it asks an engine for the pieces below. Texts that come in and go out are
// expressions in parentheses or single terms, so that they can be put together without regard to
// precedence.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast/statement.h"
#include "tsql/translation.h"

namespace tarlo::tsql::print {

class Writer;

// What a value is compared for: being equal (=, IN, GROUP BY, DISTINCT), coming before (<, BETWEEN)
// or being sorted.
enum class Use { Equality, Order, Sort };
// Where it stands: before the operator, behind it, or in the list of an IN or CASE.
enum class Side { Left, Right, Listed };

class Engine {
 public:
  virtual ~Engine() = default;

  // Literals. `wanted` as of a parameter.
  virtual std::string parameter(std::size_t number) const = 0;
  virtual std::string constant(const ast::Literal& literal, const Parameter& wanted,
                               Position position) const = 0;
  virtual std::string null(Type wanted) const = 0;

  // Values.
  virtual std::string columnValue(std::string text, const Column& column) const = 0;
  // Of the last INSERT of this connection.
  virtual std::string lastIdentity() const = 0;
  virtual std::string convert(std::string text, Type from, Type to) const = 0;
  virtual std::string cast(Writer& writer, const ast::Cast& cast, Position position) const = 0;
  // What the column stores of a literal in its kind, and of any value.
  virtual std::string stored(std::string text, const Column& column) const = 0;
  virtual std::string written(std::string text, Type from, const Column& column) const = 0;
  virtual std::string unary(ast::UnaryOp op, std::string operand, Type type) const = 0;
  // The operator between the operands; "" where the node is printed by `operation`.
  virtual std::string_view infix(const ast::Expr& binary) const = 0;
  virtual std::string operation(const ast::Expr& binary, const std::string& left,
                                const std::string& right) const = 0;
  // `expr` is a call, of an aggregate too.
  virtual std::string call(Writer& writer, const ast::Expr& expr) const = 0;
  // What stands for an expression of a grouped query instead of itself, if anything does.
  virtual std::optional<std::string> groupValue(Writer& writer, const ast::Expr& expr) const = 0;

  // Comparing.
  virtual std::string compared(Writer& writer, const ast::Expr& expr, Use use, Side side) const = 0;
  virtual std::string like(Writer& writer, const ast::Like& node) const = 0;
  virtual std::string inList(Writer& writer, const ast::InList& node) const = 0;
  virtual std::string inQuery(Writer& writer, const ast::InQuery& node) const = 0;

  // Queries. An item of the result; compared: with the same item of other rows.
  virtual std::string selected(Writer& writer, const ast::Expr& expr, bool isCompared) const = 0;
  virtual std::string comparedItem(const std::string& name, Type type) const = 0;
  virtual std::string scalarSubquery(const ast::Query& query, std::string text) const = 0;
  virtual std::string_view crossJoin() const = 0;
  // Whether a query in FROM must have an alias.
  virtual bool namesDerived() const = 0;
  // Whether the literals in the condition of such a join must stay in the text.
  virtual bool needsConstants(ast::JoinKind join) const = 0;
  // " LIMIT ..." of the counts; `fetch` is "" where all rows behind the offset are wanted.
  virtual std::string paging(const std::string& fetch, const std::string& offset) const = 0;
  // Whether rows with values of this type are made distinct, and sorted behind UNION, in a query
  // round theirs; otherwise the engine compares them by itself.
  virtual bool comparesOutside(Type type) const = 0;
  // Item c1, c2, ... of the query round rows that are made distinct, and its group.
  virtual std::string distinctItem(const std::string& name, Type type) const = 0;
  virtual std::string distinctGroup(const std::string& name, Type type) const = 0;
  // Whether ORDER BY may name a select item of the type by its number.
  virtual bool sortsByNumber(Type type) const = 0;
  virtual std::string sortKey(std::string text, Type type) const = 0;
  virtual std::string direction(bool isDescending, bool mayBeNull) const = 0;
  // Where rows of a table without a key come from, for their order; "" where nothing tells.
  virtual std::string rowid(const Table& table) const = 0;
  // The order of a column of a table's key.
  virtual std::string keyOrder(const std::string& name, const Column& column) const = 0;

  // Definitions.
  virtual std::string newName(const std::string& typed, Position position) const = 0;
  virtual std::string columnType(const ast::ColumnDefinition& definition, Type type,
                                 bool isKey) const = 0;
  virtual std::string_view identityType() const = 0;      // with its PRIMARY KEY
  virtual std::string_view generatedStorage() const = 0;  // of computed columns
  virtual std::string indexPart(const Column& column, bool isDescending) const = 0;
  // How an index names what is there already.
  virtual std::string indexedName(const std::string& typed, const std::string& found) const = 0;
  // An index that the key of a new table needs beside itself; "" for none.
  virtual std::string keyIndex(const Table& table) const = 0;

  // Statements.
  // Whether `lastIdentity` knows only those that the engine made. Then it has to be told, in a step
  // before the INSERT, of those that an INSERT stores itself.
  virtual bool mustBeToldIdentities() const = 0;
  // Stands before the rows of such an INSERT.
  virtual std::string_view identityOverride() const = 0;
  virtual std::string identityNotice(const Table& table, const Column& column,
                                     const std::vector<std::string>& stored) const = 0;
  // The rows step of an EXEC.
  virtual std::string execute(const ast::Execute& execute, const std::vector<std::string>& inputs,
                              Translation& translation) const = 0;
};

const Engine& sqliteEngine();
const Engine& postgresqlEngine();

}  // namespace tarlo::tsql::print
