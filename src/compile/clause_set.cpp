#include "compile/clause_set.h"

#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::compile {

Variant toVariant(ClauseSet clauses) {
  return Array::of({Variant(), Variant(std::move(clauses.select)), Variant(std::move(clauses.from)),
                    Variant(std::move(clauses.where))});
}

ClauseSet clauseSet(const Variant& value) {
  const Array& elements = value.array();
  return {variant::spliced(elements.at(1)), variant::spliced(elements.at(2)),
          variant::spliced(elements.at(3))};
}

void cutSuffix(std::string& text, std::string_view suffix) {
  if (text.ends_with(suffix)) text.resize(text.size() - suffix.size());
}

}  // namespace tarlo::compile
