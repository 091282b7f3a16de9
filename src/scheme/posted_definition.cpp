#include "scheme/posted_definition.h"

#include "scheme/reduction.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using variant::spliced;

constexpr std::string_view kSeparator = "|||";

std::string trimmed(Page& page, std::string_view key) {
  return std::string(text::trim(spliced(page.request.value(key))));
}

}  // namespace

compile::Definition postedDefinition(Page& page, Blanks aroundComputed) {
  compile::Definition definition;
  definition.mainTable = spliced(page.request.value("TableName"));
  definition.computed = reducedComputed(aroundComputed == Blanks::Trimmed
                                            ? trimmed(page, "step1Virtual")
                                            : spliced(page.request.value("step1Virtual")));
  definition.filter = spliced(page.request.value("step2Rel"));
  std::string statistics = trimmed(page, "step3Stats");
  if (statistics.ends_with(kSeparator)) statistics.resize(statistics.size() - kSeparator.size());
  definition.statistics = statistics;
  definition.grouping = trimmed(page, "step3Groupby");
  definition.relations = spliced(page.request.value("step0Multi"));
  return definition;
}

}  // namespace tarlo::scheme
