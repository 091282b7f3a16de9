#include "compile/operations.h"

#include <gtest/gtest.h>

#include "compile/definition.h"
#include "support/dictionary.h"
#include "support/platform_database.h"

namespace tarlo::compile {
namespace {

using testing::errorOf;
using testing::textOf;

const std::string kList =
    "[Customer].[ID] as [Client.Key],[Customer].[City] as [Client.Town],"
    "[Orders].[ID] as [Order.Key],[Orders].[Amount] as [Order.Sum],[Orders].[CustID] as "
    "[Order.Cust]";
const std::string kFromWhere =
    " from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and "
    "[Customer].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1";
const std::string kStatisticsTail =
    "([Customer].[City]) as [Client.Town] from [Orders],Customer where [Orders].[Zembra_Flag]=1"
    " and  [Orders].[CustID]=[Customer].[ID]";
const std::string kSum = "select SUM([Orders].[Amount]) as [Order.Sum]," + kStatisticsTail;
const std::string kNetSum = "select SUM([Orders].[Amount]*2) as [Net]," + kStatisticsTail;
const std::string kGroup = " group by [Customer].[City]";

Definition definition(std::string computed, std::string filter, std::string statistics) {
  const std::string grouping = statistics.empty() ? "" : "111";
  return {"10", std::move(computed), std::move(filter), std::move(statistics), grouping, "5"};
}

class Assembly : public ::testing::Test {
 protected:
  Assembly() { data.remove("Field", 103); }
  testing::DictionaryDatabase data;
};

TEST_F(Assembly, EachCombinationHasItsOperationAndItsStatement) {
  const std::string net = "Net:[101]*2";
  const struct {
    std::string_view operation;
    Definition definition;
    std::string statement;
    std::string rows;  // of the first column
  } examples[] = {
      {"getQuery_None", definition("", "", ""), "select " + kList + kFromWhere, "1,1,2"},
      {"getQuery_Vir", definition(net, "", ""),
       "select " + kList + ",[Orders].[Amount]*2 as [Net]" + kFromWhere, "1,1,2"},
      {"getQuery_Fil", definition("", "101,1,500,and|||111,7,Paris,-1", ""),
       "select " + kList + kFromWhere +
           " and ( [Orders].[Amount] > '500' and [Customer].[City] = 'Paris' )",
       "1"},
      {"getQuery_Vir_Fil", definition(net, "-1,1,100,-1", ""),
       "select " + kList + ",[Orders].[Amount]*2 as [Net]" + kFromWhere +
           " and ( [Orders].[Amount]*2 > '100')",
       "1,1,2"},
      {"getQuery_Sta", definition("", "", "101,4|||111,6"), kSum + kGroup, "900,1000"},
      {"getQuery_Vir_Sta", definition(net, "", "-1,4|||111,6"), kNetSum + kGroup, "1800,2000"},
      {"getQuery_Fil_Sta", definition("", "101,1,500,-1", "101,4|||111,6"),
       kSum + " and ( [Orders].[Amount] > '500' )" + kGroup, "900,600"},
      {"getQuery_Vir_Fil_Sta", definition(net, "-1,1,100,-1", "-1,4|||111,6"),
       kNetSum + " and ( [Orders].[Amount]*2 > '100')" + kGroup, "1800,2000"},
  };
  for (const auto& example : examples) {
    EXPECT_EQ(operationFor(example.definition), example.operation);
    const std::string statement = compileDefinition(data.page(), example.definition);
    EXPECT_EQ(statement, example.statement);
    std::string first;
    for (frame::Row row : frame::rows(data.page(), statement)) {
      first += (first.empty() ? "" : ",") + row.text(0);
    }
    EXPECT_EQ(first, example.rows) << example.operation;
  }
}

TEST_F(Assembly, BlanksCountAsAPart) {
  EXPECT_EQ(operationFor(definition(" ", " ", " ")), "getQuery_Vir_Fil_Sta");
  EXPECT_EQ(operationFor({"10", "", "", "", "111", "5"}), "getQuery_None");
}

TEST_F(Assembly, WithoutARelationThereIsTheMainTableAlone) {
  for (const Variant& relations : {Variant("0"), Variant(""), Variant(variant::Null{})}) {
    EXPECT_EQ(getQuery_None(data.page(), 11, relations).text(),
              "select [Customer].[ID] as [Client.Key],[Customer].[City] as [Client.Town]"
              " from [Customer] where [Customer].[Zembra_Flag]=1");
  }
}

TEST_F(Assembly, AFilterOnAnAliasedTableGetsTheAlias) {
  data.execute("update Zembra_DataDict_Field set Zembra_Flag=1 where Zembra_ID=103");
  const std::string filter = "101,1,500,and|||111|103,7,Paris,-1";
  const std::string statement = getQuery_Fil(data.page(), 10, filter, "5,6").text();
  const std::string end = " and ( [Orders].[Amount] > '500' and [Customer1].[City] = 'Paris' )";
  EXPECT_TRUE(statement.ends_with(end)) << statement;
  EXPECT_EQ(frame::rows(data.page(), statement).size(), 1u);
  // With relation 5 alone the via field leads nowhere: the earlier condition is lost and the
  // database refuses the rest.
  const std::string broken = getQuery_Fil(data.page(), 10, filter, "5").text();
  EXPECT_TRUE(broken.ends_with("[Orders].[Zembra_Flag]=1 and ([ShipTo][City] = 'Paris' )"))
      << broken;
  EXPECT_NE(errorOf([&] { frame::rows(data.page(), broken); }), 0);
}

TEST_F(Assembly, AFilterOfWhichNothingIsLeft) {
  // Dropped conditions leave empty text, which is not wrapped.
  EXPECT_EQ(getQuery_Fil(data.page(), 10, "-1,1,5,-1", "5").text(), "select " + kList + kFromWhere);
  EXPECT_EQ(errorOf([&] { getQuery_Vir_Fil(data.page(), 10, "Net:1", "999,1,5,-1", "5"); }), 5);
  EXPECT_EQ(errorOf([&] { getQuery_Vir_Fil(data.page(), 10, "Net:1", "", "5"); }), 5);
}

TEST_F(Assembly, AMissingMainTableIsLeftToTheDatabase) {
  EXPECT_EQ(getQuery_None(data.page(), 99, "5").text(), "select  from [] where [].[Zembra_Flag]=1");
  EXPECT_EQ(getQuery_Sta(data.page(), 10, "101,5", "", "5").text(),
            "select COUNT([Orders].[Amount]) as [Order.Sum] from [Orders]"
            " where [Orders].[Zembra_Flag]=1");
}

TEST(Propagation, UpdatesWhatRunsAndAnswersForTheLast) {
  testing::PlatformDatabase data;
  EXPECT_EQ(textOf(UpdateQuery(data.page(), 10)), "False");
  data.addScheme("fine", "Query_Vir,Query_Fields", "'N:''x''','old'");
  data.addScheme("broken", "Query_Vir,Query_Fields,Zembra_Flag", "'N:NOSUCH()','old',0");
  EXPECT_EQ(textOf(UpdateQuery(data.page(), 10)), "False");
  data.execute("update Zembra_Query_Main set Query_Fields='old'");
  data.addScheme("last", "Query_Fields", "'old'");
  EXPECT_EQ(textOf(UpdateQuery(data.page(), 10)), "True");
  EXPECT_EQ(data.rows("select Query_Name,CASE WHEN Query_Fields='old' THEN 'old' ELSE 'new' END,"
                      "CASE WHEN Zembra_ModiDate IS NULL THEN 'no' ELSE 'yes' END from "
                      "Zembra_Query_Main order by Query_ID"),
            "fine,new,yes | broken,old,no | last,new,yes");
  EXPECT_TRUE(testing::holds(
      data.rows("select Query_Fields from Zembra_Query_Main where Query_ID=1"), "'x' as [N]"));
  EXPECT_EQ(textOf(UpdateQuery(data.page(), "x")), "False");
}

TEST(Propagation, FollowsTheDictionary) {
  testing::PlatformDatabase data;
  data.addScheme("s", "Query_Fields", "'old'");
  data.execute("update Zembra_DataDict_Field set DDF_CName='Total' where Zembra_ID=101");
  UpdateQuery(data.page(), 10);
  EXPECT_TRUE(
      testing::holds(data.rows("select Query_Fields from Zembra_Query_Main"), "[Order.Total]"));
}

}  // namespace
}  // namespace tarlo::compile
