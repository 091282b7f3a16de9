#include "compile/clauses.h"

#include <gtest/gtest.h>

#include "support/dictionary.h"

namespace tarlo::compile {
namespace {

TEST(FilterMerge, PutsTheAliasInPlaceOfTheViaColumn) {
  const std::string where =
      "[O].[CustID]=[C].[ID] and [C].[Zembra_Flag]=1 and  [O].[ShipTo]=[C1].[ID] and "
      "[O].[ShipTo]=[C2].[ID] and [O].[Zembra_Flag]=1";
  const std::pair<const char*, const char*> rows[] = {
      {"", ""},
      {" ", " "},
      {" [O].[A] > '1' ", " [O].[A] > '1' "},
      {"|||[ShipTo];[City] = 'P' ", " [C1].[City] = 'P' "},  // the first match wins
      {"|||[CustID];[City] = 'P' and|||[ShipTo];[City] = 'Q' ",
       " [C].[City] = 'P' and [C1].[City] = 'Q' "},
      {" [O].[A] > '1' and|||[ShipTo];[City] = 'P' ", " [O].[A] > '1' and [C1].[City] = 'P' "},
      // A plain condition behind a marked one belongs to the same item.
      {"|||[ShipTo];[City] = 'P' and [O].[A] > '1' ", " [C1].[City] = 'P' and [O].[A] > '1' "},
      // Separators without a marker go.
      {"[O].[A] > '1' and |||[O].[B] > '2' ", "[O].[A] > '1' and [O].[B] > '2' "},
      // The case of the column counts, and no match loses what was merged before.
      {" [O].[A] > '1' and|||[shipto];[City] = 'P' or|||[ShipTo];[City] = 'Q' ",
       "[shipto][City] = 'P' or [C1].[City] = 'Q' "},
      // A ";" in a value cuts it.
      {"|||[ShipTo];[City] = 'P;Q' ", " [C1].[City] = 'P"},
      // Deletion flags take part in the matching.
      {"|||[Zembra_Flag];[City] = 'P' ", " 1.[City] = 'P' "},
  };
  for (const auto& [filter, merged] : rows) EXPECT_EQ(mergedFilter(filter, where), merged);
}

TEST(FilterMerge, ConditionsThatAreNoJoins) {
  const std::string filter = "|||[ShipTo];[City] = 'P' ";
  EXPECT_EQ(mergedFilter(filter, ""), "[ShipTo][City] = 'P' ");
  // Blanks round a column are none of its name.
  EXPECT_EQ(mergedFilter(filter, "[O].[ShipTo] =[C].[ID]"), " [C].[City] = 'P' ");
  EXPECT_EQ(testing::errorOf([&] { mergedFilter(filter, "[O].[A]"); }), 9);
  EXPECT_EQ(testing::errorOf([&] { mergedFilter(filter, "A=[O].[B]"); }), 9);
}

}  // namespace
}  // namespace tarlo::compile
