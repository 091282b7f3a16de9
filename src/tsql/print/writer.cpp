#include "tsql/print/writer.h"

#include <fmt/format.h>

#include <algorithm>

#include "tsql/error.h"
#include "tsql/print/printing.h"

namespace tarlo::tsql::print {
namespace {

std::string doubled(std::string_view text, char quote) {
  std::string result(1, quote);
  for (const char c : text) {
    if (c == quote) result.push_back(quote);
    result.push_back(c);
  }
  result.push_back(quote);
  return result;
}

}  // namespace

std::string quotedName(std::string_view name) {
  return doubled(name, '"');
}

std::string quoted(std::string_view text) {
  return doubled(text, '\'');
}

std::string call(std::string_view name, const std::vector<std::string>& arguments) {
  return fmt::format("{}({})", name, fmt::join(arguments, ", "));
}

const Table& Writer::table(const ast::TableName& name, Position position) {
  if (const Table* found = catalogue_.findTable(name.name)) return *found;
  throw StatementError(Refusal::Name, position, "unknown table " + name.name);
}

std::string Writer::newAlias() {
  return fmt::format("t{}", ++aliases_);
}

std::string Writer::derivedAlias() {
  return engine_.namesDerived() ? " AS " + newAlias() : std::string();
}

bool Writer::lifts(const ast::Literal& literal) const {
  return !literal.fixed && literal.ordinal >= 0 && literals_ == Literals::Lifted;
}

bool Writer::lifts(const ast::Expr& expr) const {
  const auto* literal = std::get_if<ast::Literal>(&expr.node);
  return literal != nullptr && lifts(*literal);
}

std::string Writer::literal(const ast::Literal& literal, Type target, Position position,
                            const std::string& column) {
  const Parameter wanted{literal.ordinal, target, column};
  if (lifts(literal)) return parameter(wanted);
  noteFixed(literal.ordinal, literal.text);
  return engine_.constant(literal, wanted, position);
}

std::string Writer::parameter(const Parameter& wanted) {
  const auto same = [&](const Parameter& other) {
    return other.ordinal == wanted.ordinal && other.target == wanted.target &&
           other.column == wanted.column;
  };
  const auto found = std::find_if(parameters_.begin(), parameters_.end(), same);
  const auto index = static_cast<std::size_t>(found - parameters_.begin()) + 1;
  if (found == parameters_.end()) parameters_.push_back(wanted);
  return engine_.parameter(index);
}

void Writer::noteFixed(int ordinal, const std::string& text) {
  if (ordinal < 0) return;
  for (const auto& fixed : translation_.fixed) {
    if (fixed.ordinal == ordinal) return;
  }
  translation_.fixed.push_back({ordinal, text});
}

Step Writer::finishStep(StepRole role, std::string text) {
  return {role, std::move(text), std::exchange(parameters_, {})};
}

}  // namespace tarlo::tsql::print
