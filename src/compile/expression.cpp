#include "compile/expression.h"

#include "compile/grammar.h"
#include "text/pieces.h"

namespace tarlo::compile {

void appendExpression(std::string& out, std::string_view expression, BlankTokens blanks,
                      const ReferenceNames& names) {
  for (const ExpressionToken& token : expressionTokens(expression)) {
    if (blanks == BlankTokens::Drop && text::trim(token.text).empty()) continue;
    if (!token.reference) {
      out += token.text;
      continue;
    }
    if (const auto found = names(*token.reference)) {
      out += token.literal;
      appendReference(out, *found);
    }
  }
}

}  // namespace tarlo::compile
