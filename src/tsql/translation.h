#pragma once
// The result of the front end: an engine's statements with parameters in the place of literals,
// ready to be kept and used again for every statement of the same shape.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/catalogue.h"
#include "tsql/lex/shape.h"
#include "tsql/resolve/resolver.h"

namespace tarlo::tsql {

enum class Dialect { Sqlite, Postgresql };

// A literal that became a parameter.
struct Parameter {
  int ordinal = 0;  // which literal
  // The kind to convert the literal to before it is bound (Null: as its class says), the scale for
  // decimals, and for texts written into a column the most UTF-16 units that it holds (0 = any).
  Type target;
  std::string column;  // the column written, for messages; else ""
};

enum class StepRole { Rows, Write, Ddl };

struct Step {
  StepRole role = StepRole::Rows;
  std::string text;                   // parameter i (from 1) is "?i" or "$i"
  std::vector<Parameter> parameters;  // parameter i is parameters[i - 1]
};

struct Translation {
  std::vector<Step> steps;            // run in order on one connection
  std::vector<ResultColumn> columns;  // of the last Rows step
  // Literals whose value is part of the text: another value needs another translation.
  struct Fixed {
    int ordinal;
    std::string text;
  };
  std::vector<Fixed> fixed;
  // An INSERT that names an identity column, and the table; refused unless identity_insert is on
  // for it.
  std::string explicitIdentityOf;
  // What the text touches. Positions are those of the text that it was translated from.
  std::vector<Touched> touched;
  // SET IDENTITY_INSERT: the table it is turned on or off for. No step belongs to it.
  std::string identityInsertTable;
  bool identityInsertOn = false;
  // An INSERT whose last step gives no rows: asked for its identity on the row-returning path,
  // `identityStep` replaces the last step (RETURNING the identity column). Its text is "" where the
  // table has no identity column.
  Step identityStep;
  std::string identityColumn;  // its title on that path
  // EXEC where the engine cannot call the host (PostgreSQL): the procedure. The one row of the step
  // holds its inputs, of these types, and what the procedure gives is the row of the statement; "".
  std::string procedure;
  std::vector<Type> procedureInputs;
};

struct TranslateOptions {
  Dialect dialect = Dialect::Sqlite;
  bool allowDdl = false;  // CREATE and ALTER TABLE; a data procedure never sends them
  bool allowDelete = false;
};

// Parses, resolves and prints. Throws StatementError.
Translation translate(std::string_view sql, Catalogue& catalogue,
                      const TranslateOptions& options = {});

// The value to bind for a literal. Throws StatementError (Kind) at `position` when it does not
// convert: text that is no number, a fraction for an integer, no date, longer than the column.
struct BoundValue {
  enum class Storage { Integer, Real, Text } storage = Storage::Text;
  std::int64_t integer = 0;
  double real = 0;
  std::string_view text;  // into the literal; where `owned` is not empty, that is the text
  std::string owned;
};
BoundValue convertLiteral(ast::LiteralClass literalClass, std::string_view text,
                          const Parameter& parameter, Position position = {});

// The same value as text for PostgreSQL, which declares the parameter by its target: Int int4,
// Decimal numeric with all its digits, Float float8, Date timestamp, Text text, Null as the kind of
// the literal's class. An integer of more than 32 bits and a text with a zero byte are refused too.
std::string literalText(ast::LiteralClass literalClass, std::string_view text,
                        const Parameter& parameter, Position position = {});
Kind kindOf(ast::LiteralClass literalClass);

}  // namespace tarlo::tsql
