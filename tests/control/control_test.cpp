// Control schemes as they are stored.

#include "control/control.h"

#include <gtest/gtest.h>

#include "control_data.h"

namespace tarlo::control {
namespace {

using tarlo::testing::ControlDatabase;

struct StoredControls : ControlDatabase {
  StoredControls() {
    execute(
        "insert into Zembra_Query_Field (QF_Name,QF_Desc,QF_NameID,QF_FieldType,QF_Relation) "
        "values ('pick','it''s',7,1,'select ID,City from Customer|||102'),"
        "('bound','',7,2,'select ID,City from Customer||| [Orders],[Orders].[CustID],[Orders].[ID],"
        "[Orders].[Amount],Zembra_Flag <> 0;[Orders],[Orders].[CustID]|||102'),"
        "('list','',7,3,'select [Gone] from Orders|||Sum | Town'),"
        "('template','',8,1,'select ID,City from Customer'),"
        "('other','',8,9,'select 1|||x'),('empty','',8,1,null)");
  }
  Control load(std::int64_t id) { return loadControl(page(), id).value(); }
};

using LoadControl = tarlo::testing::On<StoredControls>;

TEST_F(LoadControl, EachKindHasItsParts) {
  const Control pick = data.load(1);
  EXPECT_EQ(pick.name + "," + pick.remark + "," + std::to_string(pick.scheme), "pick,it's,7");
  EXPECT_EQ(pick.statement, "select ID,City from Customer");
  EXPECT_EQ(pick.field, "102");

  const Control cascade = data.load(2);
  ASSERT_EQ(cascade.levels.size(), 2U);
  EXPECT_EQ(cascade.levels[1], "[Orders],[Orders].[CustID]");
  EXPECT_EQ(cascade.field, "102");
  EXPECT_EQ(levelStatement(cascade, 1),
            "select [Orders].[ID],[Orders].[Amount],[Orders].[CustID] from [Orders] where "
            "Zembra_Flag <> 0");
  for (const std::size_t none : {0U, 2U, 3U}) {  // the second is not whole
    EXPECT_EQ(levelStatement(cascade, none), std::nullopt) << none;
  }

  const Control list = data.load(3);
  EXPECT_EQ(list.titles, (std::vector<std::string>{"Sum", "Town"}));
  EXPECT_EQ(list.field, "");
  EXPECT_EQ(data.load(4).field, "");
  EXPECT_EQ(data.load(5).kind, ControlKind::Unknown);
  EXPECT_EQ(data.load(5).statement, "select 1");
}

TEST_F(LoadControl, ReadsAndRunsNothingElse) {
  EXPECT_EQ(data.load(3).statement, "select [Gone] from Orders");
  EXPECT_FALSE(runs(data.page(), data.load(3)));
  EXPECT_FALSE(runs(data.page(), data.load(6)));
  EXPECT_TRUE(runs(data.page(), data.load(1)));
  EXPECT_EQ(data.logged(), "Empty");
  data.execute("update Zembra_Query_Field set Zembra_Flag=0 where QF_ID=1");
  EXPECT_FALSE(loadControl(data.page(), 1));
  EXPECT_FALSE(loadControl(data.page(), 77));
  const auto live = controlsOn(data.page(), 7);
  ASSERT_EQ(live.size(), 2U);
  EXPECT_EQ(live[0].id, 2);
}

TEST_F(LoadControl, TheFieldIsThatOfTheDictionary) {
  const auto field = boundField(data.page(), data.load(2));
  ASSERT_TRUE(field);
  EXPECT_EQ(field->id, 102);
  EXPECT_EQ(field->names.table + "." + field->names.column, "Orders.CustID");
  EXPECT_FALSE(boundField(data.page(), data.load(4)));
  data.execute("update Zembra_Query_Field set QF_Relation='select 1|||-1' where QF_ID=1");
  EXPECT_FALSE(boundField(data.page(), data.load(1)));
}

}  // namespace
}  // namespace tarlo::control
