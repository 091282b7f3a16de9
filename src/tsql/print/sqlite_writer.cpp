#include "tsql/print/sqlite_writer.h"

#include <fmt/format.h>

#include <algorithm>

#include "tsql/error.h"

namespace tarlo::tsql::sqlite {
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

// A real that SQLite reads back as the same double and never as an integer.
std::string realText(double number) {
  std::string text = fmt::format("{}", number);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

}  // namespace

std::string quotedName(std::string_view name) {
  return doubled(name, '"');
}

std::string quotedText(std::string_view text) {
  // A zero byte would end the statement.
  if (text.find('\0') == std::string_view::npos) return doubled(text, '\'');
  std::string hex;
  for (const char c : text) hex += fmt::format("{:02X}", static_cast<unsigned char>(c));
  return "CAST(X'" + hex + "' AS TEXT)";
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

std::string Writer::literal(const ast::Literal& literal, Type target, Position position,
                            const std::string& column) {
  const Parameter wanted{literal.ordinal, target, column};
  if (!literal.fixed && literal.ordinal >= 0 && literals_ == Literals::Lifted) {
    return parameter(wanted);
  }
  noteFixed(literal.ordinal, literal.text);
  const BoundValue bound = convertLiteral(literal.literalClass, literal.text, wanted, position);
  switch (bound.storage) {
    case BoundValue::Storage::Integer:
      return fmt::format("{}", bound.integer);
    case BoundValue::Storage::Real:
      return realText(bound.real);
    default:
      return quotedText(bound.owned.empty() ? bound.text : std::string_view(bound.owned));
  }
}

std::string Writer::parameter(const Parameter& wanted) {
  const auto same = [&](const Parameter& other) {
    return other.ordinal == wanted.ordinal && other.target == wanted.target &&
           other.column == wanted.column;
  };
  const auto found = std::find_if(parameters_.begin(), parameters_.end(), same);
  const auto index = found - parameters_.begin() + 1;
  if (found == parameters_.end()) parameters_.push_back(wanted);
  return fmt::format("?{}", index);
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

}  // namespace tarlo::tsql::sqlite
