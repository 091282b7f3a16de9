#include "compile/operations.h"

#include <gtest/gtest.h>

#include "compile/clauses.h"
#include "support/dictionary.h"

namespace tarlo::compile {
namespace {

using testing::errorOf;

using Row = std::pair<const char*, const char*>;

TEST(Filter, WithoutComputedFields) {
  testing::DictionaryDatabase data;
  data.remove("Field", 120);
  const Row rows[] = {
      {"", ""},
      {"101,1,500,-1", " [Orders].[Amount] > '500' "},
      {"101,7,北京,and", " [Orders].[Amount] = '北京' and"},
      {"101,2,5,and|||101,3,6,or|||101,4,7,and|||101,5,8,-1",
       " [Orders].[Amount] < '5' and [Orders].[Amount] <> '6' or [Orders].[Amount] >= '7' and"
       " [Orders].[Amount] <= '8' "},
      {"111,6,Par,or|||111,8,(x),-1",
       " [Customer].[City] Like '%Par%' or [Customer].[City] Not Like '%(x)%' "},
      {"101,1,GETDATE(),and|||101,1,(5,-1",
       " [Orders].[Amount] >GETDATE()and [Orders].[Amount] > '(5' "},
      {"101,1,)(,-1", " [Orders].[Amount] >)("},  // only the presence of both signs counts
      {"120,7,1,-1", " [Region].[ID] = '1' "},    // deleted fields are found
      // Conditions whose field is not found go with their logic word.
      {"999,1,5,and|||101,1,5,-1", " [Orders].[Amount] > '5' "},
      {"-1,1,5,and|||101,1,5,-1", " [Orders].[Amount] > '5' "},
      // Marked items; each of the two look-ups counts for itself.
      {"111|103,7,Paris,-1", "|||[ShipTo];[City] = 'Paris' "},
      {"101,1,5,and|||111|103,1,(6),-1", " [Orders].[Amount] > '5' and|||[ShipTo];[City] >(6)"},
      {"999|103,7,Paris,and|||101,1,5,-1", "|||[ShipTo]; [Orders].[Amount] > '5' "},
      {"111|999,7,Paris,-1", "[City] = 'Paris' "},
      // An unknown code takes the operator of the condition before.
      {"101,9,5,and|||101,2,6,and|||101,0,7,-1",
       " [Orders].[Amount]  '5' and [Orders].[Amount] < '6' and [Orders].[Amount] < '7' "},
      // A comma in a value: the rest takes the place of the logic word.
      {"111,7,a,b,-1", " [Customer].[City] = 'a' b"},
  };
  for (const auto& [filter, text] : rows) {
    EXPECT_EQ(Query_getfilterNoVir(data.page(), filter).text(), text) << filter;
  }
}

TEST(Filter, WithComputedFields) {
  testing::DictionaryDatabase data;
  const std::string computed = "Net:[101]*2;Two:[100] [101] + 1;Text:'a:b'";
  const Row rows[] = {
      {"101,1,500,-1", " [Orders].[Amount]  > '500' "},
      {"101,1,(5),-1", " [Orders].[Amount]  >(5) "},
      {"111,6,Par,-1", " [Customer].[City] Like '%Par%' "},
      {"-1,1,100,-1", " [Orders].[Amount]*2 > '100'"},
      {"-1,1,(5),-1", " [Orders].[Amount]*2 >(5)"},
      {"-1,8,5,-1", " [Orders].[Amount]*2 Not Like '%5%'"},
      // The literal in front of a reference stays, blanks included.
      {"-2,1,5,-1", " [Orders].[ID] [Orders].[Amount] + 1 > '5'"},
      {"-3,7,c,-1", " 'a:b' = 'c'"},  // only the first colon ends the name
      {"101,1,5,and|||-1,2,6,or|||101,3,7,-1",
       " [Orders].[Amount]  > '5' and  [Orders].[Amount]*2 < '6' or [Orders].[Amount]  <> '7' "},
      // A via field is not used: no marked item, and "|||" only behind other text.
      {"111|103,7,Paris,-1", "[Customer].[City] = 'Paris' "},
      {"111|103,7,(x),-1", "[Customer].[City] =(x) "},
      {"101,1,5,and|||111|103,7,Paris,-1",
       " [Orders].[Amount]  > '5' and |||[Customer].[City] = 'Paris' "},
      // The last three characters go, whatever they are.
      {"101,1,500,and", " [Orders].[Amount]  > '500' a"},
      {"101,1,京,北京城", " [Orders].[Amount]  > '京' 北"},
      {"999,1,5,and|||101,1,5,-1", " [Orders].[Amount]  > '5' "},
      {"01,1,5,and|||-1.4,1,5,-1", " [Orders].[Amount]*2 > '5'"},  // "01" is a dictionary field
  };
  for (const auto& [filter, text] : rows) {
    EXPECT_EQ(Query_getfilter(data.page(), filter, computed).text(), text) << filter;
  }
}

TEST(Filter, MalformedConditionsRaise) {
  testing::DictionaryDatabase data;
  data.remove("Field", 111);
  // The errors without and with computed fields; a negative number stands for any of the database.
  const std::tuple<const char*, int, int> rows[] = {{"101", 9, 9},
                                                    {"101,1", 9, 9},
                                                    {"101,1,5", 9, 9},
                                                    {"101,1,5,-1|||", 9, 9},
                                                    {"101,x,5,-1", 13, 13},
                                                    {"101,,5,-1", 13, 13},
                                                    {"", 0, 5},
                                                    {"999,1,5,-1", 0, 5},
                                                    {"0,1,5,-1", 0, 9},
                                                    {"-3,1,5,-1", 0, 9},
                                                    {"-x,1,5,-1", -1, 13},
                                                    {"-9999999999,1,5,-1", 0, 6},
                                                    {"-1,1,5,-1", 0, 13},
                                                    {"-2,1,5,-1", 0, 0},
                                                    {",1,5,-1", -1, 13}};
  for (const auto& [filter, without, with] : rows) {
    const int plain = errorOf([&] { Query_getfilterNoVir(data.page(), filter); });
    EXPECT_EQ(plain < 0 ? -1 : plain, without) << filter;
    // Item 1 has a reference that expressions do not find.
    EXPECT_EQ(errorOf([&] { Query_getfilter(data.page(), filter, "Gone:1+[111];One:1"); }), with)
        << filter;
  }
  EXPECT_EQ(errorOf([&] { Query_getfilterNoVir(data.page(), variant::Null{}); }), 94);
}

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
