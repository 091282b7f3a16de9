#include "compile/operations.h"

#include <gtest/gtest.h>

#include "support/platform_database.h"

namespace tarlo::compile {
namespace {

using testing::PlatformDatabase;
using testing::textOf;

TEST(Propagation, UpdatesWhatRunsAndAnswersForTheLast) {
  PlatformDatabase data;
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
  PlatformDatabase data;
  data.addScheme("s", "Query_Fields", "'old'");
  data.execute("update Zembra_DataDict_Field set DDF_CName='Total' where Zembra_ID=101");
  UpdateQuery(data.page(), 10);
  EXPECT_TRUE(
      testing::holds(data.rows("select Query_Fields from Zembra_Query_Main"), "[Order.Total]"));
}

}  // namespace
}  // namespace tarlo::compile
