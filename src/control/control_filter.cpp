#include "control/control_statement.h"

#include "compile/grammar.h"
#include "text/pieces.h"

namespace tarlo::control {
namespace {

// Nothing when the code is none.
std::string_view operatorOf(std::string_view code) {
  if (code.size() != 1 || code[0] < '1' || code[0] > '8') return {};
  return compile::kComparisonOperators[static_cast<std::size_t>(code[0] - '1')];
}

std::string conditions(std::string_view filter) {
  std::string text;
  std::string_view comparison;
  for (const compile::Condition& row : compile::conditionsOf(filter)) {
    const compile::Pieces& parts = row.parts();
    if (parts.size() < 3) continue;
    if (const auto found = operatorOf(parts[1]); !found.empty()) comparison = found;
    const std::string_view around = comparison.ends_with("Like") ? "%" : "";
    text.append(parts[0]).append(" ").append(comparison).append(" '").append(around);
    text.append(parts[2]).append(around).append("' ");
    if (parts.size() > 3 && parts[3] != "-1") text.append(parts[3]).append(" ");
  }
  return text;
}

std::string withoutDanglingLogic(std::string text) {
  if (text.ends_with("and ") || text.ends_with(" or ")) text.resize(text.size() - 4);
  return text;
}

}  // namespace

std::string withoutLineEnds(std::string_view text) {
  std::string kept;
  kept.reserve(text.size());
  for (const char c : text) {
    if (c != '\r' && c != '\n') kept += c;
  }
  return kept;
}

std::string compileControlFilter(std::string_view filter, FilterUse use) {
  switch (use) {
    case FilterUse::SaveUserControl: {
      const std::string text = withoutLineEnds(conditions(filter));
      return text.empty() ? text : "(" + text + ")";
    }
    case FilterUse::PreviewUserControl:
      return withoutDanglingLogic(withoutLineEnds(conditions(filter)));
    case FilterUse::SaveTemplateControl:
      return withoutDanglingLogic(conditions(text::trim(withoutLineEnds(filter))));
    case FilterUse::PreviewTemplateControl:
      return withoutDanglingLogic(conditions(filter));
  }
  return {};
}

}  // namespace tarlo::control
