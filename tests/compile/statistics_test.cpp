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
    Definition definition;
    definition.mainTable = "10";
    definition.statistics = stats;
    definition.grouping = group;
    definition.relations = relations;
    return statisticsClauses(data.page(), definition, ComputedFields(kComputed));
  }
  testing::DictionaryDatabase data;
};

TEST_F(StatisticsTest, SelectItems) {
  struct Row {
    std::string stats;
    std::string select;
  };
  const Row rows[] = {
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
  for (const Row& row : rows) EXPECT_EQ(clauses(row.stats).select, row.select) << row.stats;
}

TEST_F(StatisticsTest, TablesAreJoinedOnceAndOnlyWhenNeeded) {
  const std::string main = "[Orders].[Zembra_Flag]=1";
  const std::string join = "[Orders].[CustID]=[Customer].[ID]";
  struct Row {
    std::string stats, group, relations, from, where;
  };
  const Row rows[] = {
      {"101,4", "", "5", "[Orders]", main},
      {"110,5|||111,6", "111", "5", "[Orders],Customer", main + " and  " + join},
      // Behind a reference in an expression there is one blank.
      {"-2,6", "", "5", "[Orders],Customer", main + " and " + join},
      {"101,4", "111", "5", "[Orders],Customer", main + " and  " + join},
      {"101,4", "-2", "5", "[Orders],Customer", main + " and " + join},
      {"101,4", " 111 ", "5", "[Orders],Customer", main + " and  " + join},
      // The first row of the relation table wins.
      {"111,6", "", "6,5", "[Orders],Customer", main + " and  " + join},
      // A two-hop row joins the far table straight to the main table.
      {"121,6", "", "5,7", "[Orders],Region", main + " and  [Orders].[CustID]=[Region].[ID]"},
  };
  for (const Row& row : rows) {
    const ClauseSet set = clauses(row.stats, row.group, row.relations);
    EXPECT_EQ(set.from, row.from) << row.stats;
    EXPECT_EQ(set.where, row.where) << row.stats;
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
  struct Row {
    std::string stats, group;
    int error;
  };
  const Row rows[] = {
      {"101", "", 9},     {"101,4|||", "", 9}, {"x,4", "", 13},       {"999,4", "", 13},
      {"-9,4", "", 9},    {"0,4", "", 9},      {"101,4", "x", 13},    {"101,4", "999", 13},
      {"101,4", "-9", 9}, {"101,4", "0", 9},   {"101,4", "101,", 13},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(errorOf([&] { clauses(row.stats, row.group); }), row.error)
        << row.stats << " by " << row.group;
  }
  EXPECT_EQ(errorOf([&] { Query_getStats(data.page(), 10, "-1,4", "no name", "", "5"); }), 5);
}

TEST(Grouping, BothOperations) {
  testing::DictionaryDatabase data;
  data.remove("Field", 111);
  struct Row {
    Variant group;
    std::string withoutComputed, withComputed;
  };
  const Row rows[] = {
      {"", "", ""},
      {"  ", "", ""},
      {variant::Null{}, "", ""},
      {101, " group by [Orders].[Amount]", " group by [Orders].[Amount]"},
      {" 101,102 ", " group by [Orders].[Amount],[Orders].[CustID]",
       " group by [Orders].[Amount],[Orders].[CustID]"},
      {"111", " group by [Customer].[City]", " group by [Customer].[City]"},
      {"101,-1", " group by [Orders].[Amount]", " group by [Orders].[Amount],[Orders].[Amount]*2"},
      // The list as a whole is trimmed.
      {"-4,-3", " group by ", " group by [Orders].[Amount],*2"},
      {"-2", " group by ", " group by + 'x'"},  // its reference is deleted
      {"999", " group by ", " group by "},
      {"0", " group by ", " group by "},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Query_getGroupbyNoVir(data.page(), row.group).text(), row.withoutComputed);
    EXPECT_EQ(Query_getGroupby(data.page(), row.group, kComputed).text(), row.withComputed);
  }
}

TEST(Grouping, TokensThatAreNoFields) {
  testing::DictionaryDatabase data;
  data.addField(40000, 10, "Late", "Late");
  EXPECT_EQ(Query_getGroupbyNoVir(data.page(), "40000").text(), " group by [Orders].[Late]");
  struct Row {
    std::string group;
    int error;
  };
  for (const Row& row : {Row{"40000", 6}, Row{"x", 13}, Row{"101,", 13}, Row{"-9", 9}}) {
    EXPECT_EQ(errorOf([&] { Query_getGroupby(data.page(), row.group, kComputed); }), row.error);
  }
  EXPECT_NE(errorOf([&] { Query_getGroupbyNoVir(data.page(), "x"); }), 0);
}

}  // namespace
}  // namespace tarlo::compile
