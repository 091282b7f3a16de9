#include "scheme/posted_definition.h"

#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using variant::spliced;

std::string trimmed(Page& page, std::string_view key) {
  return std::string(text::trim(spliced(page.request.value(key))));
}

std::string reducedExpression(std::string_view expression) {
  std::string output;
  for (const std::string_view piece : text::split(expression, "]")) {
    for (const std::string_view part : text::split(piece, "[")) {
      const std::size_t bar = part.find('|');
      if (bar == std::string_view::npos) {
        output += part;
      } else {
        output.append("[").append(part.substr(bar + 1));
      }
    }
    output += ']';
  }
  if (output.ends_with(']')) output.pop_back();
  return output;
}

}  // namespace

std::string reducedComputed(std::string_view posted) {
  std::string text = text::replace(text::replace(posted, "‘", "'"), "’", "'");
  std::string result;
  for (const std::string_view item : text::split(text, ";")) {
    const std::size_t colon = item.find(':');
    const std::size_t head = colon == std::string_view::npos ? 0 : colon + 1;
    result.append(item.substr(0, head)).append(reducedExpression(item.substr(head))).append(";");
  }
  if (result.ends_with(';')) result.pop_back();
  return result;
}

compile::Definition postedDefinition(Page& page, Blanks aroundComputed) {
  const auto value = [&](std::string_view key) { return spliced(page.request.value(key)); };
  std::string statistics = trimmed(page, "step3Stats");
  if (statistics.ends_with(text::kPartMark)) {
    statistics.resize(statistics.size() - text::kPartMark.size());
  }
  return {
      .mainTable = value("TableName"),
      .computed = reducedComputed(aroundComputed == Blanks::Trimmed ? trimmed(page, "step1Virtual")
                                                                    : value("step1Virtual")),
      .filter = value("step2Rel"),
      .statistics = statistics,
      .grouping = trimmed(page, "step3Groupby"),
      .relations = value("step0Multi")};
}

}  // namespace tarlo::scheme
