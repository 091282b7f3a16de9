#include "metadata/operations.h"

#include <gtest/gtest.h>

#include "support/dictionary.h"

namespace tarlo::metadata {
namespace {

using testing::textOf;

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
