#include "metadata/operations.h"

#include <gtest/gtest.h>

#include "support/dictionary.h"

namespace tarlo::metadata {
namespace {

using testing::errorOf;
using testing::textOf;

TEST(DictionaryLookups, GiveTheNamesOfLiveTablesAndFields) {
  testing::DictionaryDatabase data;
  Page& page = data.page();
  EXPECT_EQ(textOf(getTableName_Query(page, 10)), "Orders,Order");
  EXPECT_EQ(textOf(getAllFieldID_Query(page, "11")), "110 | 111");
  EXPECT_EQ(textOf(getFieldName_Query(page, 110)), "Customer,Client,ID,Key,1,11,1");
  EXPECT_EQ(textOf(getFieldName_Query(page, 111)), "Customer,Client,City,Town,0,11,0");
  // Kinds 10 to 14 are special without being the key.
  data.execute("update Zembra_DataDict_Field set DDF_Type=12 where Zembra_ID=111");
  EXPECT_EQ(textOf(getFieldName_Query(page, 111)), "Customer,Client,City,Town,1,11,0");

  data.remove("Field", 111);
  EXPECT_EQ(textOf(getFieldName_Query(page, 111)), "Null");
  EXPECT_EQ(textOf(getAllFieldID_Query(page, 11)), "110");
  data.remove("Table", 11);
  EXPECT_EQ(textOf(getTableName_Query(page, 11)), "Null");
  EXPECT_EQ(textOf(getFieldName_Query(page, 110)), "Null");
}

TEST(DictionaryLookups, AFailedStatementIsNullWhereTheLookUpHandlesErrors) {
  testing::DictionaryDatabase data;
  Page& page = data.page();
  for (const Variant& id : {Variant(), Variant(variant::Null{}), Variant("x"), Variant("1 or"),
                            Variant(Array::of({Variant(10)}))}) {
    EXPECT_TRUE(getTableName_Query(page, id).isNull());
    EXPECT_TRUE(getAllFieldID_Query(page, id).isNull());
    EXPECT_TRUE(getFieldName_Query(page, id).isNull());
    EXPECT_NE(errorOf([&] { getZembraID(page, id); }), 0);
    EXPECT_NE(errorOf([&] { get2TableRel(page, id, 10); }), 0);
    EXPECT_NE(errorOf([&] { verID2ZembraID(page, id, 10); }), 0);
  }
  EXPECT_NE(errorOf([&] { getRelTableID(page, "O'Neil"); }), 0);
}

TEST(DictionaryLookups, KeysAndRelationsOfTables) {
  testing::DictionaryDatabase data;
  Page& page = data.page();
  data.remove("Field", 110);
  EXPECT_EQ(textOf(getZembraID(page, 11)), "110,ID,Key");  // deleted, and found all the same
  EXPECT_EQ(textOf(getZembraID(page, 99)), "Null");

  EXPECT_EQ(textOf(get2TableRel(page, 11, 10)), "102,110 | 103,110");
  EXPECT_EQ(textOf(get2TableRel(page, 10, 11)), "Null");  // one direction only

  EXPECT_EQ(textOf(getRelTableID(page, "Orders")), "11");
  EXPECT_EQ(textOf(getRelTableID(page, "Region")), "Null");
}

TEST(DictionaryLookups, DisplayNameOfAField) {
  testing::DictionaryDatabase data;
  const std::pair<Variant, const char*> rows[] = {
      {"[Customer].[City]", "Town"},
      {"  Customer.City ", "Town"},
      {"Customer.[City]", "Town"},
      {"[Customer].[Nope]", "-1"},
      {"Customer", "-1"},
      {"", "-1"},
      {variant::Null{}, "-1"},
      {"[.City", "-1"},
      {"O'Neil.City", "-1"},
  };
  for (const auto& [name, display] : rows) {
    EXPECT_EQ(textOf(getFieldDesc(data.page(), name)), display);
  }
}

TEST(DictionaryLookups, DisplayNameOfATableRewritesTheArgument) {
  testing::DictionaryDatabase data;
  const std::tuple<Variant, const char*, const char*> rows[] = {
      {" [Customer] ", "Client", "Customer"},
      {" Customer ", "Client", "Customer"},
      {"Nope", "-1", "Nope"},
      {"[", "-1", "["},
      {"[]", "-1", ""},
      {variant::Null{}, "-1", "Null"},
  };
  for (auto [name, display, after] : rows) {
    EXPECT_EQ(textOf(getTableDesc(data.page(), name)), display);
    EXPECT_EQ(textOf(name), after);
  }
}

TEST(DictionaryLookups, VersionOfAControlScheme) {
  testing::DictionaryDatabase data;
  data.execute("insert into Zembra_Query_Field_Ver2 (Zembra_ID,QF_ID,QF_NameID) values (8,3,4)");
  EXPECT_EQ(textOf(verID2ZembraID(data.page(), 3, 4)), "8");
  EXPECT_EQ(textOf(verID2ZembraID(data.page(), 4, 3)), "-1");
}

TEST(RelationTable, WaysOfReachingTables) {
  testing::DictionaryDatabase data;
  // A third way from Orders, with Orders at the relation end, and an intermediate table that uses
  // two fields.
  data.addTable(13, "Invoice", "Bill");
  data.addField(130, 13, "OrderID", "Order");
  data.addRelation(8, 13, 130, 10, 100);
  data.addRelation(9, 11, 111, 12, 120);
  const std::tuple<int, const char*, const char*> rows[] = {
      {10, "5", "11,110,102,11,110,0"},
      {10, "5,8", "11,110,102,11,110,0 | 13,130,100,13,130,0"},
      {10, "5,6", "11,110,102,11,110,0 | 11,110,103,11,110,0"},
      {10, "5,7", "11,110,102,11,110,0 | 12,120,102,11,110,110"},
      // One two-hop row for each link of the intermediate table.
      {10, "5,6,7",
       "11,110,102,11,110,0 | 11,110,103,11,110,0 | 12,120,102,11,110,110 |"
       " 12,120,103,11,110,110"},
      // The far relation leaves the intermediate table by another field than the near one enters.
      {10, "5,9", "11,110,102,11,110,0 | 12,120,102,11,111,110"},
      {12, "5,7", "10,102,120,11,110,110 | 11,110,120,11,110,0"},
      {11, "5,7", "10,102,110,10,102,0 | 12,120,110,12,120,0"},
      {10, "7", "Null"},  // touches nothing that the main table reaches
      {12, "5,7,8", "10,102,120,11,110,110 | 11,110,120,11,110,0"},  // three hops are too many
      {10, "0", "Null"},
      {10, "", "Null"},
      {10, "5)", "Null"},
  };
  for (const auto& [mainTable, relations, table] : rows) {
    EXPECT_EQ(textOf(getRelationTable_Query(data.page(), mainTable, relations)), table)
        << mainTable << " by " << relations;
  }
  EXPECT_EQ(textOf(getRelationTable_Query(data.page(), Variant(), "5")), "Null");
}

}  // namespace
}  // namespace tarlo::metadata
