#include <gtest/gtest.h>

#include "control/operations.h"
#include "control_data.h"

namespace tarlo::control {
namespace {

using tarlo::testing::ControlDatabase;
using tarlo::testing::holds;

constexpr std::string_view kStored =
    "<script>        window.top.switchStep(); \r\n"
    "parent.dialogArguments.window.location.reload();</script>";
constexpr std::string_view kNameTaken =
    "<script>parent.sAlert('此查询方案下的控件关系方案名称已存在，请使用另一名称！');</script>";
constexpr std::string_view kNotSaved = "<script>parent.sAlert('方案保存时出错！');</script>";

std::string save(ControlDatabase& data, int kind) {
  data.ask("fieldtype", std::to_string(kind));
  return data.writtenBy([&] { savesearch_UsrField(data.page()); });
}

using SaveDropDown = tarlo::testing::On<ControlDatabase>;

TEST_F(SaveDropDown, StoresTheStatementAndTheRelatingField) {
  const std::string scheme = data.addOrders();
  data.askColumns(scheme, "[Customer].[ID]", "[Customer].[City]");
  data.ask({{"QF_Name", "it's"},
            {"QF_Desc", "a\r\n'b'"},
            {"filter", "[Customer].[City],7,Paris,and"},
            {"relfield", "102"}});
  // A dangling word stays in its brackets, and the database refuses it.
  EXPECT_EQ(save(data, 1),
            "<script>parent.sAlert('得到的查询语句有错误，无法保存！\\n"
            "请检查主表关联字段是否已正确选择！');</script>");
  data.ask("filter", "[Customer].[City],7,Paris,-1");
  EXPECT_EQ(save(data, 1), kStored);
  EXPECT_EQ(data.newest(),
            "it's," + scheme +
                ",,,,,[Customer],,select [Customer].[ID],[Customer].[City] from [Customer] where "
                "[Customer].Zembra_Flag<> 0 and ([Customer].[City] = 'Paris' )|||102,a'b',1,0,1");
  EXPECT_EQ(save(data, 1), kNameTaken);
  data.execute("update Zembra_Query_Field set Zembra_Flag=0");
  EXPECT_EQ(save(data, 1), kStored);  // the name of a deleted one is free
}

TEST_F(SaveDropDown, CaptionsAndTwoTables) {
  data.askColumns(data.addOrders(), "[Orders].[ID]", "[Orders].[Amount]");
  data.ask({{"QF_Name", "n"}, {"CField", "Or'der.Key,Order.Sum"}, {"relfield", "-1"}});
  EXPECT_EQ(save(data, 1), kStored);
  EXPECT_TRUE(holds(data.newest(), ",,,Key,Sum,[Orders],Or'der,select ")) << data.newest();
  // The text's table is not in the statement.
  data.ask({{"viewField", "[Customer].[City]"}, {"QF_Name", "m"}});
  EXPECT_TRUE(holds(save(data, 1), "无法保存"));
}

TEST_F(SaveDropDown, LineEndsLeaveTheValuesTableBeforeTablesAreCompared) {
  data.askColumns(data.addOrders(), "\r\n[Orders].[ID]", "[Orders].[Amount]");
  data.ask({{"QF_Name", "n"}, {"CField", "Order.Key,Order.Sum"}});
  EXPECT_EQ(save(data, 1), kStored);
  EXPECT_TRUE(holds(data.newest(), ",,,Key,Sum,[Orders],Order,select [Orders].[ID],"))
      << data.newest();
}

// What is stored after a run that was logged is the text that the log has.
TEST_F(SaveDropDown, AStatementTooLongForTheLogIsStoredAsTheLogsWords) {
  data.askColumns(data.addOrders(), "[Customer].[ID]", "[Customer].[City]");
  data.ask({{"QF_Name", "n"},
            {"relfield", "102"},
            {"filter", "[Customer].[City],3," + std::string(2000, 'x') + ",-1"}});
  EXPECT_EQ(save(data, 1), kStored);
  EXPECT_TRUE(holds(data.newest(), ",Batch update|||102,")) << data.newest();
}

TEST(SaveControl, WhatIsRefusedWritesNothing) {
  for (const int kind : {1, 2, 3}) {
    ControlDatabase data;
    data.askColumns(data.addOrders(), "[Customer].[ID]", "[Customer].[City]");
    data.ask("QF_Name", "   ");
    EXPECT_EQ(save(data, kind), "<script>parent.sAlert('方案名称不能为空！');</script>");
    data.ask("QF_Name", "n");
    data.askColumns(data.addOrders(), "[Nowhere].[A]", "[Nowhere].[B]");
    data.ask("viewfield", "1");
    data.execute("update Zembra_Query_Main set Query_Fields=Query_Fields + ' and [Gone].[A]=1'");
    EXPECT_TRUE(holds(save(data, kind), "得到的查询语句有错误，无法保存！")) << kind;
    EXPECT_EQ(data.rows("select QF_ID from Zembra_Query_Field"), "Empty");
  }
  ControlDatabase data;
  EXPECT_EQ(save(data, 4), "");
}

TEST_F(SaveDropDown, ASchemeThatIsNoNumberFailsTheInsert) {
  data.askColumns("", "[Customer].[ID]", "[Customer].[City]");
  data.ask("QF_Name", "n");
  EXPECT_EQ(save(data, 1), kNotSaved);
}

TEST(SaveCascade, JoinsAsTheSchemeDoesAndLosesItsLastCharacter) {
  ControlDatabase data;
  const std::string scheme = data.addOrders();
  data.askColumns(scheme, "[Customer].[ID]", "[Orders].[Amount]");
  data.ask({{"QF_Name", "n"},
            {"relField1", "[Orders].[CustID],[Orders].[ShipTo]"},
            {"relField2", "[Orders].[ID],[Orders].[ID]"},
            {"relField3", "[Orders].[Amount],[Orders].[ID]"}});
  EXPECT_EQ(
      save(data, 2),
      "<script>parent.sAlert('方案成功保存！');parent.dialogArguments.window.location.reload()"
      ";\r\ntop.window.close();</script>");
  EXPECT_EQ(
      data.newest(),
      "n," + scheme +
          ",[ID],[Amount],,,[Customer].[Orders],,,select [Customer].[ID],[Orders].[Amount] from "
          "[Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and "
          "[Orders].Zembra_Flag <> 0|||[Orders],[Orders].[CustID],[Orders].[ID],[Orders].[Amount],"
          "Zembra_Flag <> 0;[Orders],[Orders].[ShipTo],[Orders].[ID],[Orders].[ID],"
          "Zembra_Flag <> 0,,2,0,1");
  data.execute("update Zembra_Query_Field set Zembra_Flag=0");
  EXPECT_TRUE(holds(save(data, 2), "名称已存在"));  // a deleted cascade keeps its name
  // A join in one word with the last condition of the scheme loses its bracket.
  data.execute(
      "update Zembra_Query_Main set Query_Fields='select 1 from [Orders],[Customer] where "
      "[Orders].[CustID]=[Customer].[ID]'");
  data.ask("QF_Name", "m");
  EXPECT_TRUE(holds(save(data, 2), "无法保存"));
}

using SaveList = tarlo::testing::On<ControlDatabase>;

TEST_F(SaveList, StandsOnTheSchemesKey) {
  const std::string scheme = data.addOrders();
  data.ask({{"id", scheme}, {"QF_Name", "n"}});
  data.ask("viewfield", "undefined,3,undefined,1,77");  // 77 is no column
  data.ask("TitleField", "To<wn, Key");
  EXPECT_EQ(save(data, 3), kStored);
  EXPECT_EQ(data.newest(),
            "n," + scheme +
                ",,,,,select [Orders].[ID],[Customer].[City] as [Client.Town],[Orders].[ID] as "
                "[Order.Key] from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and "
                "[Customer].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1|||Town| Key,,3,0,1");
  // The key is run without the operation log, which holds the row alone.
  EXPECT_FALSE(data.logged().starts_with("select")) << data.logged();
}

TEST_F(SaveList, AConstantTakesTheKeysPlaceBesideAGrouping) {
  data.ask(
      {{"id", data.addCounts()}, {"QF_Name", "n"}, {"viewfield", "1,2"}, {"TitleField", "a,b"}});
  EXPECT_EQ(save(data, 3), kStored);
  EXPECT_TRUE(holds(data.newest(),
                    ",select 1 as tempidcolumn_V1,[Orders].[CustID] as "
                    "[Order.Cust],COUNT([Orders].[ID]) as [Order.Count] from"))
      << data.newest();
  EXPECT_EQ(save(data, 3), kNameTaken);
}

}  // namespace
}  // namespace tarlo::control
