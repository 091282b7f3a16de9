// The list page and its frame against whole pages.
#include "scheme/operations.h"

#include <gtest/gtest.h>

#include <map>

#include "scheme/page_frame.h"
#include "support/golden_page.h"
#include "support/page_support.h"
#include "support/text.h"
#include "variant/runtime_error.h"

namespace tarlo::scheme {
namespace {

using tarlo::testing::expectGolden;
using tarlo::testing::holds;

bool everyLineEndIsCrLf(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) return false;
    if (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')) return false;
  }
  return true;
}

std::string paneOf(tarlo::testing::PageDatabase& data, const Variant& style) {
  return data.writtenBy([&] { writeStylePane(data.page(), style, SidePane::Links); });
}

using ManagerPage = tarlo::testing::On<tarlo::testing::PageDatabase>;

TEST_F(ManagerPage, IsWrittenLineByLineBetweenHeadAndFoot) {
  const std::string page = data.writtenBy([&] { ctrlSearch(data.page()); });
  EXPECT_TRUE(everyLineEndIsCrLf(page));
  const std::string head = data.writtenBy([&] { writePageHead(data.page(), "查询方案自定义"); });
  const std::string foot = data.writtenBy([&] { writePageFoot(data.page()); });
  ASSERT_TRUE(page.starts_with(head) && page.ends_with(foot));
  expectGolden("ctrl_search.html",
               page.substr(head.size(), page.size() - head.size() - foot.size()));
  expectGolden("page_foot.html", foot);
  const std::map<std::string, std::string> headers = {{"Cache-Control", "no-cache"},
                                                      {"Expires", "0"},
                                                      {"Pragma", "No-Cache"},
                                                      {"robots", "noindex,follow"}};
  EXPECT_EQ(data.local().headers(), headers);
}

TEST_F(ManagerPage, WithoutDirectoriesThePullDownHoldsAllAndASeparator) {
  data.execute("update Zembra_Dict_TableDir set Zembra_Flag=0");
  const std::string page = data.writtenBy([&] { ctrlSearch(data.page()); });
  EXPECT_TRUE(holds(page, "grid.AddSubMenu(<>, <>, <view2>)\r\ngrid.WriteTable()\r\n<br>\r\n"));
}

TEST_F(ManagerPage, ListsLiveSchemesOfADirectoryThatRaiseNoAlert) {
  const std::string page = data.writtenBy([&] { ctrlSearch(data.page()); });
  const std::size_t start = page.find("grid.sql = <") + 12;
  const std::string list = page.substr(start, page.find(">\r\n", start) - start);
  const frame::Rows rows = frame::rows(data.page(), list + " order by a.Query_ID");
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].text(1), "user");
  EXPECT_EQ(rows[0].text(3), "用户");
  EXPECT_EQ(rows[1].text(3), "系统");
}

TEST(PageFrame, HeadAndPaneFollowTheStyle) {
  const std::tuple<Variant, std::string, std::string> rows[] = {
      {"1", "sea", "sea"},    {"2", "olive", "olive"},     {"3", "orange", "orange"},
      {"4", "sun", "sun"},    {4, "sun", "sun"},           {"5", "sea", ""},
      {Variant(), "sea", ""}, {variant::Null{}, "sea", ""}};
  for (const auto& [style, headWord, paneWord] : rows) {
    tarlo::testing::PageDatabase data;
    data.setSession("usrStyle", style);
    const std::string head = data.writtenBy([&] { writePageHead(data.page(), "a'b"); });
    EXPECT_TRUE(holds(head, "document.title = 'Orvane.Zembra - a\\'b';</script>"));
    EXPECT_TRUE(holds(head,
                      "menu.title = <a'b>\r\nmenu.Left = 20\r\nmenu.Top = 40\r\n"
                      "menu.AddMenu0(<Current page color scheme>, <>, <>, <SubMenu1>)\r\n"
                      "menu.AddMenu0(<User temporary operation under authorization>, "
                      "<javascript:GrantPermissionTemp(101);>, <>, <>)"));
    EXPECT_TRUE(holds(head, "class='ZembraxTitle_" + headWord +
                                "'><img id=Zembra_Head_Style src='/images/icoDefault_" + headWord +
                                ".gif' border=0>&nbsp;Zembra a'b</div>"));
    const std::string pane = paneOf(data, style);
    EXPECT_TRUE(holds(pane, "}else{\r\nparent.TarloY.document.body.className='" + paneWord +
                                "body';\r\nparent.startHeadtop.className='startHeadtop" + paneWord +
                                "';\r\n"));
  }
}

TEST(PageFrame, TheMenuOfAPageIsUsedAsItIs) {
  tarlo::testing::PageDatabase data;
  data.setSession("usrICID", 102);  // starts workflow 3
  const std::shared_ptr<Object> menu =
      std::make_shared<tarlo::testing::RecordingObject>(data.page(), "own");
  menu->put("title", "T");
  expectGolden("own_menu.html", data.writtenBy([&] { writePageHead(data.page(), menu); }));
}

TEST(PageFrame, AChildOfTheWorkflowMenuGetsNoAuthorizationEntry) {
  tarlo::testing::PageDatabase data;
  data.setSession("usrICID", "205");
  const std::string head = data.writtenBy([&] { writePageHead(data.page(), "t"); });
  EXPECT_FALSE(holds(head, "authorization"));
  EXPECT_TRUE(holds(head, "ZembraSaveStyle(205,1)"));
}

TEST(PageFrame, AModuleThatIsNoNumberStopsThePage) {
  tarlo::testing::PageDatabase data;
  data.setSession("usrICID", "x");
  for (const bool isHead : {true, false}) {
    try {
      isHead ? writePageHead(data.page(), "t") : writePageFoot(data.page());
      FAIL();
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number(), 13);
    }
  }
}

TEST(PageFrame, PaneTextIsOneScriptString) {
  tarlo::testing::PageDatabase data;
  const std::string pane = paneOf(data, "2");
  const std::size_t start = pane.find("var HTMLHelp = '") + 16;
  const std::string text = pane.substr(start, pane.find("\r\n", start) - start);
  EXPECT_TRUE(text.ends_with("      </table>';"));
  EXPECT_TRUE(holds(text, "</table>\\n<div id=helpDiv style=\\'width:100%\\'>\\n"));
  EXPECT_TRUE(holds(text, "desc=\"it\\'s\""));
}

}  // namespace
}  // namespace tarlo::scheme
