#include <string>

#include "compile/clauses.h"
#include "compile/references.h"
#include "variant/error_state.h"

namespace tarlo::compile {

std::string computedItems(DictionaryReader& dictionary, const ComputedFields& computed) {
  // Resume-next: these keep their last values when the step that sets them fails.
  ErrorState errors;
  std::string_view name;
  std::optional<Reference> found;

  const auto resolve = [&](std::string_view id) {
    errors.run([&] { found = quotedExpressionReference(dictionary, id); });
    return found;
  };
  std::string result;
  for (std::string_view item : computed.items()) {
    errors.run([&] { name = computedName(item); });
    appendExpression(result, computedExpression(item), BlankTokens::Keep, resolve);
    result.append(" as [").append(name).append("],");
  }
  if (result.ends_with(',')) result.pop_back();
  return result;
}

}  // namespace tarlo::compile
