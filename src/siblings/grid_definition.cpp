#include "siblings/grid_definition.h"

#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::siblings {
namespace {

// The literal that the text begins with, a quote of either kind around it; "" when there is none.
std::string leadingLiteral(std::string_view text) {
  if (text.empty() || (text[0] != '"' && text[0] != '\'')) return {};
  std::string value;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == text[0]) return value;
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    value += text[i];
  }
  return {};
}

bool isNameByte(char c) {
  return text::isLetterOrDigit(c) || c == '_';
}

// Only a script that begins with the call counts: captions hold names that people have typed, and
// what such a name looks like must not open the door to it.
std::string conditionOf(std::string_view script) {
  script = text::trim(script);
  std::size_t i = 0;
  while (i < script.size() && isNameByte(script[i])) ++i;
  constexpr std::string_view kCall = ".gotoView(";
  if (i == 0 || !script.substr(i).starts_with(kCall)) return {};
  return leadingLiteral(text::ltrim(script.substr(i + kCall.size())));
}

}  // namespace

std::string unescapedScript(std::string_view text) {
  std::string script;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escapes = text[i] == '\\' && i + 1 < text.size();
    if (escapes && (text[i + 1] == '"' || text[i + 1] == '\\')) ++i;
    script += text[i];
  }
  return script;
}

std::string_view bareCondition(std::string_view condition) {
  condition = text::trim(condition);
  constexpr std::string_view kAnd = "and ";
  if (condition.size() > kAnd.size() &&
      text::equalsNoCase(condition.substr(0, kAnd.size()), kAnd)) {
    condition = text::trim(condition.substr(kAnd.size()));
  }
  return condition;
}

GridConditions::GridConditions(const GridDefinition& grid) {
  for (const GridMenu& menu : grid.menus) {
    for (const GridView& view : menu.views) {
      const std::string condition = conditionOf(unescapedScript(view.script));
      if (!condition.empty()) conditions_.emplace(bareCondition(condition));
    }
  }
}

bool GridConditions::allows(std::string_view condition) const {
  const std::string_view bare = bareCondition(condition);
  return bare.empty() || conditions_.contains(bare);
}

}  // namespace tarlo::siblings
