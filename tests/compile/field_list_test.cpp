#include "compile/operations.h"

#include <gtest/gtest.h>

#include "compile/clauses.h"
#include "support/dictionary.h"

namespace tarlo::compile {
namespace {

class FieldListTest : public ::testing::Test {
 protected:
  ClauseSet clauses(int table, const std::string& relations) {
    metadata::DictionaryReader dictionary(data.page());
    loadFor(dictionary, {.mainTable = std::to_string(table), .relations = relations}, Columns::All);
    return fieldListClauses(dictionary, std::to_string(table), relations);
  }
  // A third way from Orders, with Orders at the relation end.
  void addInvoice() {
    data.addTable(13, "Invoice", "Bill");
    data.addField(130, 13, "OrderID", "Order");
    data.addRelation(8, 13, 130, 10, 100);
  }
  testing::DictionaryDatabase data;
};

TEST_F(FieldListTest, ATableReachedTwiceIsAliasedTheSecondTime) {
  const Variant value = getQuery_Field_In(data.page(), 10, "5,6");
  EXPECT_EQ(value.array().upperBound(), 3);
  EXPECT_TRUE(value.array().at(0).isEmpty());
  const ClauseSet set = clauses(10, "5,6");
  EXPECT_EQ(value.array().at(2).text(), set.from);
  EXPECT_EQ(set.from, "[Customer],[Customer] as [Customer1],[Orders]");
  EXPECT_EQ(set.where,
            "[Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and "
            "[Orders].[ShipTo]=[Customer1].[ID] and [Customer1].[Zembra_Flag]=1 and "
            "[Orders].[Zembra_Flag]=1");
  EXPECT_EQ(set.select,
            "[Customer].[ID] as [Client.Key],[Customer].[City] as [Client.Town],"
            "[Customer1].[ID] as [Client.Key1],[Customer1].[City] as [Client.Town1],"
            "[Orders].[ID] as [Order.Key],[Orders].[Amount] as [Order.Sum],"
            "[Orders].[CustID] as [Order.Cust],[Orders].[ShipTo] as [Order.Ship]");
}

TEST_F(FieldListTest, TwoHopsBringTheIntermediateTableIn) {
  const ClauseSet set = clauses(10, "5,7");
  EXPECT_EQ(set.from, "[Customer],[Customer] as [Customer1],[Region],[Orders]");
  EXPECT_EQ(set.where,
            "[Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and "
            "[Orders].[CustID]=[Customer1].[ID] and [Customer1].[Zembra_Flag]=1 and "
            "[Customer].[ID]=[Region].[ID] and [Region].[Zembra_Flag]=1 and "
            "[Orders].[Zembra_Flag]=1");
  EXPECT_TRUE(
      set.select.starts_with("[Customer].[ID] as [Client.Key],[Customer].[City] as "
                             "[Client.Town],[Region].[ID] as [Area.Key],"))
      << set.select;
}

TEST_F(FieldListTest, EveryTwoHopRowBeginsAtTheMainTable) {
  const std::string where = clauses(10, "5,6,7").where;
  EXPECT_NE(where.find("[Orders].[CustID]=[Customer2].[ID] and "), std::string::npos) << where;
  EXPECT_NE(where.find("[Orders].[ShipTo]=[Customer3].[ID] and "), std::string::npos) << where;
}

TEST_F(FieldListTest, TheJoinsOfTwoHopsAreCrossed) {
  // Region is reached by Customer's City, Customer by its ID: each hop uses the other's field.
  data.addRelation(9, 11, 111, 12, 120);
  EXPECT_NE(clauses(10, "5,9").where.find("[Orders].[CustID]=[Customer1].[City] and "
                                          "[Customer1].[Zembra_Flag]=1 and "
                                          "[Customer].[ID]=[Region].[ID] and "),
            std::string::npos);
}

TEST_F(FieldListTest, ADirectRowBehindATwoHopRowStartsFromTheIntermediateTable) {
  addInvoice();  // table 13 sorts behind the two-hop row of table 12
  EXPECT_NE(clauses(10, "5,7,8").where.find("[Customer].[ID]=[Invoice].[OrderID] and "),
            std::string::npos);
  EXPECT_NE(clauses(10, "5,8").where.find("[Orders].[ID]=[Invoice].[OrderID] and "),
            std::string::npos);
}

TEST_F(FieldListTest, AFieldThatIsGoneLeavesACrossProductOrAnEmptyName) {
  data.remove("Field", 102);
  EXPECT_EQ(clauses(10, "5").where, "[Customer].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1");
  EXPECT_EQ(clauses(10, "5").from, "[Customer],[Orders]");
  data.remove("Field", 110);
  EXPECT_EQ(clauses(10, "6").where.substr(0, 34), "[Orders].[ShipTo]=[Customer].[] an");
  data.remove("Field", 111);
  // Nor is the name that of the row before.
  data.execute("update Zembra_DataDict_Field set Zembra_Flag=1 where Zembra_ID in (102,110)");
  data.addRelation(9, 10, 103, 11, 111);
  EXPECT_NE(clauses(10, "5,9").where.find("[Orders].[ShipTo]=[Customer1].[] and "),
            std::string::npos);
  data.remove("Field", 110);
  EXPECT_TRUE(clauses(10, "6").select.starts_with("[Orders].[ID] as"));  // no live field
}

TEST_F(FieldListTest, ATableThatIsGoneTakesTheNameOfTheOneBefore) {
  addInvoice();
  data.remove("Table", 13);
  // Its fields are gone with it, so nothing of it is joined or selected.
  EXPECT_EQ(clauses(10, "5,8").from, "[Customer],[Orders]");
}

TEST_F(FieldListTest, AMainTableThatIsGoneLeavesEmptyBrackets) {
  // A two-hop row has left the intermediate table's name in its place.
  data.remove("Table", 10);
  EXPECT_TRUE(clauses(10, "5,7").from.ends_with(",[]")) << clauses(10, "5,7").from;
  EXPECT_TRUE(clauses(10, "5,7").where.ends_with(" and [].[Zembra_Flag]=1"));
}

TEST_F(FieldListTest, TheAliasBearsTheRowIndexAndNotACount) {
  for (int i = 0; i < 10; ++i) {
    data.addField(200 + i, 10, "Other" + std::to_string(i), "Other");
    data.addRelation(200 + i, 10, 200 + i, 11, 110);
  }
  const ClauseSet set = clauses(10, "5,6,200,201,202,203,204,205,206,207,208,209");
  EXPECT_NE(set.from.find("[Customer] as [Customer1],"), std::string::npos);
  EXPECT_NE(set.from.find("[Customer] as [Customer11],[Orders]"), std::string::npos);
}

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
