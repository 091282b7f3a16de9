#include "scheme/operations.h"

#include <gtest/gtest.h>

#include "scheme/titles.h"
#include "support/wizard_support.h"

namespace tarlo::scheme {
namespace {

using tarlo::testing::holds;
using tarlo::testing::WizardDatabase;

TEST(SchemeDetail, ShowsTwoTitlesInARow) {
  EXPECT_EQ(titleRows({}), "");
  EXPECT_TRUE(titleRows({"a", "b", "c"})
                  .ends_with("b</td></tr>\r\n<tr><td "
                             "style=\"padding-left:20\">c</td>\r\n<td>&nbsp;</td></tr>\r\n"));
  WizardDatabase data;
  data.ask("id",
           data.addScheme("s", "Query_Fields", "'select ID as [K],Amount as [A] from Orders'"));
  const std::string page = data.writtenBy([&] { showSearchDlg(data.page()); });
  EXPECT_TRUE(holds(page, "dialog.title = <查询方案预览>\r\ndialog.bodyHtml = <<table width="));
  EXPECT_TRUE(holds(page, "20\">K</td>\r\n<td style=\"padding-left:20\">A</td></tr>"));
  EXPECT_TRUE(page.ends_with("dialog.bgcolor = <menu>\r\ndialog.writeDialog()\r\n"));
  data.ask("id", "999");
  EXPECT_TRUE(holds(data.writtenBy([&] { showSearchDlg(data.page()); }),
                    "字段名</td>\r\n</tr>\r\n</table>"));
}

TEST(SchemeDetail, DeletionFlagsSchemesAndTheirControls) {
  constexpr std::string_view kAnswer =
      "<script>top.sAlert('选中查询方案已经从系统中删除！',false);</script>";
  WizardDatabase data;
  for (const char* name : {"a", "b", "c"}) data.addScheme(name, "Zembra_Flag", "1");
  data.execute("insert into Zembra_Query_Field (QF_Name,QF_NameID) values ('x',1),('y',2)");
  data.ask("ID", "1,3");
  EXPECT_EQ(data.writtenBy([&] { delSearch(data.page()); }), kAnswer);
  EXPECT_EQ(data.rows("select Query_ID,Zembra_Flag from Zembra_Query_Main order by Query_ID"),
            "1,0 | 2,1 | 3,0");
  EXPECT_EQ(data.rows("select QF_Name,Zembra_Flag from Zembra_Query_Field order by QF_Name"),
            "x,0 | y,1");
  data.ask("ID", "");
  EXPECT_EQ(data.writtenBy([&] { delSearch(data.page()); }), kAnswer);  // whether it worked or not
}

TEST(SchemeDetail, TablesOfFieldsAreTheWholeAnswer) {
  const std::pair<std::string, std::string> rows[] = {
      {"101,102", "10"}, {"101,111", "10,11"}, {"999", ""}, {"x", ""}};
  for (const auto& [fields, tables] : rows) {
    WizardDatabase data;
    data.page().response.write("before");
    data.ask("field", fields);
    const auto run = [&] { querycheckselect(data.page()); };
    if (tables.empty()) {
      EXPECT_EQ(data.writtenBy(run), "") << fields;
    } else {
      EXPECT_THROW(run(), frame::PageEnd);
      EXPECT_EQ(data.writtenBy([] {}), "");
      EXPECT_EQ(data.written(), tables);
    }
  }
}

}  // namespace
}  // namespace tarlo::scheme
