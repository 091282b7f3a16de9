#pragma once
// State of one batch while it is printed: parameters, aliases, and the scopes that names stand in.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast/statement.h"
#include "tsql/print/engine.h"
#include "tsql/translation.h"

namespace tarlo::tsql::print {

// Whether literals become parameters or stay in the text.
enum class Literals { Lifted, Inline };

struct PrintedSource {
  std::string alias;             // t1, t2, ...: unique over the statement, so that a name cannot
                                 // reach another scope than the resolver found
  const Table* table = nullptr;  // nothing: a derived table, whose columns are c1, c2, ...
};

struct PrintedScope {
  std::vector<PrintedSource> sources;
  // The query while clauses are printed that see its groups and no longer its rows.
  const ast::QuerySpec* grouped = nullptr;
};

class Writer {
 public:
  Writer(const Engine& engine, Catalogue& catalogue, Translation& translation, Literals literals)
      : engine_(engine), catalogue_(catalogue), translation_(translation), literals_(literals) {}

  const Engine& engine() const { return engine_; }
  // A table that the resolver has found.
  const Table& table(const ast::TableName& name, Position position);
  std::string newAlias();
  // " AS tN" for a query in FROM whose columns nobody names, where the engine wants it.
  std::string derivedAlias();
  // A parameter or, for a fixed literal, its value in the kind of `target`. `column` as in
  // Parameter.
  std::string literal(const ast::Literal& literal, Type target, Position position,
                      const std::string& column = {});
  // Whether the expression is a literal that becomes a parameter.
  bool lifts(const ast::Expr& expr) const;
  // Names a literal whose value went into the text without being printed as a value.
  void noteFixed(int ordinal, const std::string& text);
  // Makes a step of what has been printed since the last one.
  Step finishStep(StepRole role, std::string text);

  std::vector<PrintedScope>& scopes() { return scopes_; }
  // Gives back what was set before.
  Literals setLiterals(Literals literals) { return std::exchange(literals_, literals); }

  // The identity that an INSERT of this batch stores itself; what the batch asks for then.
  const ast::Expr* explicitIdentity = nullptr;

 private:
  bool lifts(const ast::Literal& literal) const;
  std::string parameter(const Parameter& wanted);

  const Engine& engine_;
  Catalogue& catalogue_;
  Translation& translation_;
  Literals literals_;
  int aliases_ = 0;
  std::vector<Parameter> parameters_;
  std::vector<PrintedScope> scopes_;
};

}  // namespace tarlo::tsql::print
