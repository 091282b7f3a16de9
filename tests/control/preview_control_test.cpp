#include <gtest/gtest.h>

#include "control/operations.h"
#include "control_data.h"
#include "support/golden_page.h"

namespace tarlo::control {
namespace {

using namespace tarlo::testing;

std::string preview(ControlDatabase& data, int kind) {
  data.ask("fieldtype", std::to_string(kind));
  return data.writtenBy([&] { previewSearchdlg_UsrField(data.page()); });
}

// The end of a preview in a dialog of its own.
void writeEnd(Page& page) {
  frame::writeDialogBodyEnd(page);
  page.response.write(
      "<div align=\"right\"><input type=\"button\" class=\"btnX\" value=\"关闭\" "
      "onclick=\"window.close()\"></div>\r\n");
  frame::writeDialogFoot(page);
}

using PreviewControl = tarlo::testing::On<ControlDatabase>;

TEST_F(PreviewControl, ADropDownWithItsRows) {
  data.askColumns(data.addOrders(), "[Customer].[ID]", "[Customer].[City]");
  data.ask("filter", "[Customer].[City],6,o,or");
  expectGolden("drop_down_preview.html", preview(data, 1));
  EXPECT_TRUE(holds(data.logged(), "Like '%o%'"));
  data.ask("filter", "[Customer].[City],7,it's,-1");
  EXPECT_EQ(preview(data, 1),
            "<script>parent.sAlert('得到的查询语句有错误，无法预览！\\n"
            "请检查方案主表关联字段是否正确选择！');</script>");
}

TEST_F(PreviewControl, ACascadeIsAlwaysRefused) {
  data.askColumns(data.addOrders(), "[Customer].[ID]", "[Customer].[City]");
  EXPECT_EQ(preview(data, 2),
            "<script>parent.sAlert('得到的查询语句有错误，无法预览！');</script>" +
                data.writtenBy([&] { writeEnd(data.page()); }));
}

TEST_F(PreviewControl, AListWaitsInTheSessionForItsFrame) {
  data.ask({{"id", data.addOrders()}, {"viewfield", "2"}, {"TitleField", "net, of tax"}});
  EXPECT_EQ(preview(data, 3), "<script>parent.step4_privew();</script>");
  expectGolden("list_preview.html",
               inFrame(data, [&] { showSearchpreview_UsrField(data.page()); }));
  // A second drawing has nothing to show.
  EXPECT_TRUE(
      holds(data.writtenBy([&] { showSearchpreview_UsrField(data.page()); }), "grid.sql = <>\r\n"));
  data.execute("update Zembra_Query_Main set Query_Fields=Query_Fields + ' and [Gone].[A]=1'");
  EXPECT_NE(tarlo::testing::errorOf([&] { preview(data, 3); }), 0);
}

TEST_F(PreviewControl, AGroupedListGetsItsConditionInFrontOfTheGrouping) {
  data.ask({{"id", data.addCounts()}, {"viewfield", "1"}});
  preview(data, 3);
  EXPECT_TRUE(holds(data.writtenBy([&] { showSearchpreview_UsrField(data.page()); }),
                    "from [Orders] where 1 = 0 group by [Orders].[CustID]>"));
}

// What is used after a run that was logged is the text that the log has.
TEST_F(PreviewControl, AStatementTooLongForTheLogIsTheLogsWords) {
  data.askColumns(data.addOrders(), "[Customer].[ID]", "[Customer].[City]");
  data.ask("filter", "[Customer].[City],3," + std::string(2000, 'x') + ",-1");
  EXPECT_TRUE(holds(preview(data, 1), "data = \"\" />"));
  EXPECT_EQ(data.logged(), "Batch update");
  std::string columns = "1";
  for (int i = 0; i < 80; ++i) columns += ",1";
  data.ask("viewfield", columns);
  EXPECT_EQ(preview(data, 3), "<script>parent.step4_privew();</script>");
  EXPECT_EQ(variant::spliced(data.page().session.get("query_sql")), "Batch update");
}

TEST(ShowControl, EachKindAsItIsStored) {
  ControlDatabase data;
  data.execute(
      "insert into Zembra_Query_Field (QF_NameID,QF_FieldType,QF_Relation) values "
      "(1,1,'select ID,City from Customer|||-1'),"
      "(1,2,'select ID,City from Customer|||[Orders],[Orders].[CustID],[Orders].[ID],"
      "[Orders].[ID],Zembra_Flag <> 0'),"
      "(1,3,'select ID,City as [c] from Customer|||Town'),"
      "(1,3,'select CustID,count(*) as [n] from Orders group by CustID|||Count'),"
      "(1,9,'x')");
  for (const auto& [id, golden] :
       {std::pair{"1", "show_drop_down.html"}, std::pair{"2", "show_cascade.html"},
        std::pair{"3", "show_list.html"}, std::pair{"4", "show_grouped_list.html"},
        std::pair{"5", "show_unknown.html"}, std::pair{"6", "show_missing.html"}}) {
    data.ask("id", id);
    expectGolden(golden, data.writtenBy([&] { showSearchDlg_UsrField(data.page()); }));
  }
}

}  // namespace
}  // namespace tarlo::control
