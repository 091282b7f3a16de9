#include "compile/computed_fields.h"

#include <string>

#include "compile/expression.h"
#include "compile/grammar.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::compile {

Variant Query_getVirtual(Page& page, const Variant& computed) {
  // Resume-next: these keep their last values when the step that sets them fails.
  ErrorState errors;
  std::string list;
  std::string_view name;
  Variant rows;

  const auto names = [&](std::string_view id) {
    errors.run([&] { rows = quotedExpressionLookup(page, id); });
    return namesOf(rows);
  };
  errors.run([&] { list = variant::spliced(computed); });
  std::string result;
  for (std::string_view item : text::split(list, ";")) {
    errors.run([&] { name = computedName(item); });
    appendExpression(result, computedExpression(item), BlankTokens::Keep, names);
    result.append(" as [").append(name).append("],");
  }
  if (result.ends_with(',')) result.pop_back();
  return result;
}

}  // namespace tarlo::compile
