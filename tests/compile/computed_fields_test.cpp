#include "compile/operations.h"

#include <gtest/gtest.h>

#include "support/dictionary.h"

namespace tarlo::compile {
namespace {

TEST(ComputedFields, BecomeSelectItems) {
  testing::DictionaryDatabase data;
  data.remove("Field", 111);
  const std::pair<Variant, const char*> rows[] = {
      {"Net:[101]*2", "[Orders].[Amount]*2 as [Net]"},
      {"One:1 + 1", "1 + 1 as [One]"},
      {"A:([101]-[102]);B:'x:y'", "([Orders].[Amount]-[Orders].[CustID]) as [A],'x:y' as [B]"},
      {"A: [101] [102] ", " [Orders].[Amount] [Orders].[CustID]  as [A]"},  // blanks stay
      {"", ""},
      {variant::Null{}, ""},
      {"A:", " as [A]"},
      {":1", "1 as []"},
      // A reference that is not found, or deleted, goes with the literal in front of it.
      {"A:1+[999]*2", "*2 as [A]"},
      {"A:1+[111]*2", "*2 as [A]"},
      // Text behind a second "[" of one token is lost.
      {"A:[101[x]+1", "[Orders].[Amount]+1 as [A]"},
      // Without a ":" the item bears the last name, and is an expression as a whole.
      {"A:1;[101]", "1 as [A],[Orders].[Amount] as [A]"},
      {"[101]", "[Orders].[Amount] as []"},
      {"A:1;;B:2", "1 as [A], as [A],2 as [B]"},
      // A look-up that fails leaves the names that the one before has found.
      {"A:[x]+1", "+1 as [A]"},
      {"A:[101]-[x]+1", "[Orders].[Amount]-[Orders].[Amount]+1 as [A]"},
  };
  for (const auto& [computed, items] : rows) {
    EXPECT_EQ(Query_getVirtual(data.page(), computed).text(), items) << testing::textOf(computed);
  }
}

}  // namespace
}  // namespace tarlo::compile
