#include "compile/operations.h"

#include <gtest/gtest.h>

#include "compile/clauses.h"
#include "support/dictionary.h"

namespace tarlo::compile {
namespace {

using testing::errorOf;

constexpr const char* kComputed = "Net:[101]*2;Where:[111] + 'x';Gone:1+[999]*2; Blank: [101]";

class StatisticsTest : public ::testing::Test {
 protected:
  ClauseSet clauses(const std::string& stats, const std::string& group = "",
                    const std::string& relations = "5") {
    const Definition definition{"10", "", "", stats, group, relations};
    metadata::DictionaryReader dictionary(data.page());
    loadFor(dictionary, definition, Columns::Named);
    return statisticsClauses(dictionary, definition, ComputedFields(kComputed));
  }
  testing::DictionaryDatabase data;
};

TEST_F(StatisticsTest, SelectItems) {
  const std::pair<const char*, const char*> rows[] = {
      {"101,1|||101,2|||101,3",
       "MAX([Orders].[Amount]) as [Order.Sum],MIN([Orders].[Amount]) as [Order.Sum],"
       "AVG([Orders].[Amount]) as [Order.Sum]"},
      {"-1,5", "COUNT([Orders].[Amount]*2) as [Net]"},
      {"-2,6", "([Customer].[City] + 'x') as [Where]"},
      {"-3,4", "SUM(*2) as [Gone]"},
      {"101,9", "([Orders].[Amount]) as [Order.Sum]"},
      {"101,4|||100, 1", "SUM([Orders].[Amount]) as [Order.Sum],SUM([Orders].[ID]) as [Order.Key]"},
      {"", ""},
  };
  for (const auto& [stats, select] : rows) EXPECT_EQ(clauses(stats).select, select);
}

TEST_F(StatisticsTest, TablesAreJoinedOnceAndOnlyWhenNeeded) {
  const std::string join = "[Orders].[CustID]=[Customer].[ID]";
  const struct {
    const char *stats, *group, *relations, *from;
    std::string join;
  } rows[] = {
      {"101,4", "", "5", "[Orders]", ""},
      {"110,5|||111,6", "111", "5", "[Orders],Customer", " and  " + join},
      // Behind a reference in an expression there is one blank.
      {"-2,6", "", "5", "[Orders],Customer", " and " + join},
      {"101,4", "111", "5", "[Orders],Customer", " and  " + join},
      {"101,4", "-2", "5", "[Orders],Customer", " and " + join},
      {"101,4", " 111 ", "5", "[Orders],Customer", " and  " + join},
      // The first row of the relation table wins.
      {"111,6", "", "6,5", "[Orders],Customer", " and  " + join},
      // A two-hop row joins the far table straight to the main table.
      {"121,6", "", "5,7", "[Orders],Region", " and  [Orders].[CustID]=[Region].[ID]"},
  };
  for (const auto& row : rows) {
    const ClauseSet set = clauses(row.stats, row.group, row.relations);
    EXPECT_EQ(set.from, row.from) << row.stats;
    EXPECT_EQ(set.where, "[Orders].[Zembra_Flag]=1" + row.join) << row.stats;
  }
}

TEST_F(StatisticsTest, ATableWhoseNameIsPartOfAnotherCountsAsPresent) {
  data.addTable(13, "Order", "Short");
  data.addField(130, 13, "ID", "Key");
  EXPECT_EQ(clauses("130,5").from, "[Orders]");
  EXPECT_EQ(clauses("130,5").where, "[Orders].[Zembra_Flag]=1");
}

TEST_F(StatisticsTest, ATableWithoutARelationTakesTheLastJoin) {
  // Region is reached by none of the relations: after Customer it takes Customer's fields.
  EXPECT_EQ(clauses("111,6|||121,6").where,
            "[Orders].[Zembra_Flag]=1 and  [Orders].[CustID]=[Customer].[ID] and "
            " [Orders].[CustID]=[Customer].[ID]");
  EXPECT_EQ(errorOf([&] { clauses("121,6"); }), 13);
}

TEST_F(StatisticsTest, AMissingMainFieldLeavesTheJoinOutForAStatisticsFieldAlone) {
  data.remove("Field", 102);
  EXPECT_EQ(clauses("111,6").where, "[Orders].[Zembra_Flag]=1");
  EXPECT_EQ(clauses("111,6").from, "[Orders],Customer");
  EXPECT_EQ(errorOf([&] { clauses("-2,6"); }), 13);
  EXPECT_EQ(errorOf([&] { clauses("101,4", "111"); }), 13);
}

TEST_F(StatisticsTest, MalformedItemsRaise) {
  const std::tuple<const char*, const char*, int> rows[] = {
      {"101", "", 9},     {"101,4|||", "", 9}, {"x,4", "", 13},       {"999,4", "", 13},
      {"-9,4", "", 9},    {"0,4", "", 9},      {"101,4", "x", 13},    {"101,4", "999", 13},
      {"101,4", "-9", 9}, {"101,4", "0", 9},   {"101,4", "101,", 13},
  };
  for (const auto& row : rows) {
    const auto& [stats, group, error] = row;
    EXPECT_EQ(errorOf([&, s = stats, g = group] { clauses(s, g); }), error) << stats << group;
  }
  EXPECT_EQ(errorOf([&] { Query_getStats(data.page(), 10, "-1,4", "no name", "", "5"); }), 5);
}

TEST(Grouping, BothOperations) {
  testing::DictionaryDatabase data;
  data.remove("Field", 111);
  for (const Variant& none : {Variant(""), Variant("  "), Variant(variant::Null{})}) {
    EXPECT_EQ(Query_getGroupbyNoVir(data.page(), none).text(), "");
    EXPECT_EQ(Query_getGroupby(data.page(), none, kComputed).text(), "");
  }
  // Without and with computed fields.
  const std::tuple<Variant, std::string, std::string> rows[] = {
      {101, "[Orders].[Amount]", "[Orders].[Amount]"},
      {" 101,102 ", "[Orders].[Amount],[Orders].[CustID]", "[Orders].[Amount],[Orders].[CustID]"},
      {"111", "[Customer].[City]", "[Customer].[City]"},
      {"101,-1", "[Orders].[Amount]", "[Orders].[Amount],[Orders].[Amount]*2"},
      // The list as a whole is trimmed.
      {"-4,-3", "", "[Orders].[Amount],*2"},
      {"-2", "", "+ 'x'"},  // its reference is deleted
      {"999", "", ""},
      {"0", "", ""},
  };
  for (const auto& [group, without, with] : rows) {
    EXPECT_EQ(Query_getGroupbyNoVir(data.page(), group).text(), " group by " + without);
    EXPECT_EQ(Query_getGroupby(data.page(), group, kComputed).text(), " group by " + with);
  }
}

TEST(Grouping, TokensThatAreNoFields) {
  testing::DictionaryDatabase data;
  data.addField(40000, 10, "Late", "Late");
  EXPECT_EQ(Query_getGroupbyNoVir(data.page(), "40000").text(), " group by [Orders].[Late]");
  for (const auto& row :
       {std::pair{"40000", 6}, std::pair{"x", 13}, std::pair{"101,", 13}, std::pair{"-9", 9}}) {
    EXPECT_EQ(errorOf([&] { Query_getGroupby(data.page(), row.first, kComputed); }), row.second);
  }
  EXPECT_NE(errorOf([&] { Query_getGroupbyNoVir(data.page(), "x"); }), 0);
}

}  // namespace
}  // namespace tarlo::compile
