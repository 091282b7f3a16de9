#include "host/desktop/desktop.h"

#include <gtest/gtest.h>

#include "host/desktop/desktop_data.h"
#include "support/database_page.h"
#include "support/schema_files.h"
#include "support/text.h"
#include "variant/convert.h"

namespace tarlo::host {
namespace {

using testing::holds;

// The demo company: user 3 designs schemes, user 22 sells and does not, user 24 may not open 211.
class DesktopTest : public ::testing::Test, public testing::DatabasePage {
 protected:
  DesktopTest() {
    for (const char* script :
         {"tables/10_schemes.sql", "tables/20_dictionary.sql", "tables/30_organisation.sql",
          "tables/40_workflow.sql", "demo/10_organisation.sql", "demo/15_workflow.sql"}) {
      runScript(testing::schemaFile(script));
    }
    signIn("3");
  }

  void signIn(const Variant& user) { local().session()["usrID"] = user; }
  std::string session(const char* key) { return variant::spliced(local().session()[key]); }

  // What one page writes.
  template <class Write>
  std::string text(Write write) {
    page().response.clear();
    write();
    return local().written();
  }
  std::string opened(const char* id) {
    return text([&] { openMenu(page(), id); });
  }
  std::string shell() {
    return text([&] { writeShell(page()); });
  }
};

// "1(2 3)": the numbers, children in brackets.
std::string outline(const std::vector<MenuEntry>& entries) {
  std::string text;
  for (const MenuEntry& entry : entries) {
    if (!text.empty()) text += ' ';
    text += std::to_string(entry.id);
    if (!entry.children.empty()) text += '(' + outline(entry.children) + ')';
  }
  return text;
}

TEST_F(DesktopTest, MenuTreeFollowsPermissions) {
  const std::pair<int, const char*> kRows[] = {
      {3, "1(2 3) 100(120(127 128 129)) 200(204(210 211))"},
      {14, "1(2 3) 100(120(127)) 200(204(210 211))"},
      {22, "1(2 3) 200(204(210 211))"},
      {24, "1(2 3) 200(204(210))"},
      {0, ""},
      {999, ""}};
  for (const auto& [user, tree] : kRows) EXPECT_EQ(outline(menuTree(page(), user)), tree) << user;
}

TEST_F(DesktopTest, MenuTreeTakesBrokenTables) {
  // A second permission row for one entry, an entry below a folder that is not granted, one below
  // nothing, a circle, an entry without a name, and a permission that is neither given nor refused.
  runScript(
      "INSERT INTO Zembra_Permission (Permission_UserID, Permission_MenuID) VALUES (22, 2)\nGO\n"
      "INSERT INTO Zembra_Permission (Permission_UserID, Permission_MenuID) VALUES (22, 128)\nGO\n"
      "SET IDENTITY_INSERT Zembra_Menu ON\nGO\n"
      "INSERT INTO Zembra_Menu (Menu_ID, Menu_Name, Menu_Href, Menu_ParentID, Menu_Order) VALUES\n"
      "  (301, N'a', '/a', 9999, 8), (302, N'b', '/b', 303, 8), (303, N'c', NULL, 302, 8),\n"
      "  (304, N'', '/d', 0, 8), (305, N'e', '/e', NULL, 9), (306, N'f', '/f', 0, 9)\nGO\n"
      "SET IDENTITY_INSERT Zembra_Menu OFF\nGO\n"
      "INSERT INTO Zembra_Permission (Permission_UserID, Permission_MenuID, permission_forbid)\n"
      "VALUES (22, 301, 0), (22, 302, 0), (22, 303, 0), (22, 304, 0), (22, 305, 0),\n"
      "  (22, 306, NULL)\nGO\n");
  EXPECT_EQ(outline(menuTree(page(), 22)), "1(2 3) 128 200(204(210 211)) 301 305");
}

TEST_F(DesktopTest, OpenMenuNotesTheModuleAndLeadsOn) {
  EXPECT_TRUE(holds(opened("127"), "location.replace(\"/TarloQuery.Zembra?action=ctrlSearch\")"));
  EXPECT_TRUE(local().session()["usrICID"].isText());
  EXPECT_EQ(session("usrICID"), "127");
  // A folder shows what the user may open in it.
  signIn("14");
  const std::string folder = opened("120");
  EXPECT_TRUE(holds(folder, "/?cmdID=127"));
  EXPECT_FALSE(holds(folder, "/?cmdID=128"));
  EXPECT_EQ(session("usrICID"), "120");
  for (const char* start : {"", "0"}) {
    EXPECT_TRUE(holds(opened(start), "dt-panel")) << start;
    EXPECT_EQ(session("usrICID"), "0");
  }
}

TEST_F(DesktopTest, OpenMenuRefuses) {
  const std::pair<const char*, const char*> kRows[] = {{"24", "211"},  // forbidden
                                                       {"22", "127"},  // no permission row
                                                       {"3", "99999"},
                                                       {"3", "-127"},
                                                       {"3", "127 or 1=1"},
                                                       {"3", "127.0"},
                                                       {"3", "99999999999999999999"},
                                                       {"", "2"},
                                                       {"3 or 1=1", "2"}};
  for (const auto& [user, menu] : kRows) {
    signIn(user);
    local().session()["usrICID"] = "2";
    const std::string text = opened(menu);
    EXPECT_TRUE(holds(text, "没有使用它的权限")) << user << '/' << menu;
    EXPECT_FALSE(holds(text, "location")) << menu;
    EXPECT_EQ(session("usrICID"), "2") << menu;
  }
}

TEST_F(DesktopTest, OpenMenuTakesAddressesOfPagesOnly) {
  const std::pair<const char*, bool> kRows[] = {
      {"/a?time=10:30", true},         {"A.Zembra?x=javascript:1", true},
      {"https://example.test/", true}, {"javascript:alert(1)", false},
      {" JavaScript:alert(1)", false}, {"java\tscript:alert(1)", false},
      {"data:text/html,x", false}};
  for (const auto& [href, opens] : kRows) {
    runScript("UPDATE Zembra_Menu SET Menu_Href = '" + std::string(href) + "' WHERE Menu_ID = 2");
    local().session()["usrICID"] = "0";
    EXPECT_EQ(holds(opened("2"), "location.replace"), opens) << href;
    EXPECT_EQ(session("usrICID"), opens ? "2" : "0") << href;
  }
}

TEST_F(DesktopTest, HostileTextStaysText) {
  const std::string hostile = "\"><script>x()</script>&''";
  runScript("UPDATE Zembra_User SET User_Name = N'" + hostile + "' WHERE User_ID = 3\nGO\n" +
            "UPDATE Zembra_Group SET Group_name = N'" + hostile + "' WHERE Group_ID = 8\nGO\n" +
            "UPDATE Zembra_Menu SET Menu_Name = N'" + hostile + "', Menu_Desc = N'" + hostile +
            "'\nGO\nUPDATE Zembra_Menu SET Menu_Href = N'/a" + hostile +
            "' WHERE Menu_ID = 2\nGO\n" + "UPDATE Zembra_MyTask_Record SET MT_Topic = N'" +
            hostile + "' WHERE MT_UserID = '3'\nGO\n");
  const auto pane = [&] { writePane(page()); };
  const auto form = [&] { writeSignInPage(page(), hostile, hostile); };
  for (const std::string& text :
       {shell(), opened("0"), opened("2"), opened("120"), this->text(pane), this->text(form)}) {
    EXPECT_FALSE(holds(text, "<script>x()")) << text;
    EXPECT_FALSE(holds(text, "\"\">")) << text;
  }
  EXPECT_TRUE(holds(shell(), "&quot;&gt;&lt;script&gt;x()"));
  EXPECT_TRUE(holds(opened("2"), "\\u003cscript"));
}

TEST_F(DesktopTest, StartPageShowsOwnOpenTasksAndSchemesToDesignersOnly) {
  runScript(
      "INSERT INTO Zembra_MyTask_Record (MT_UserID, MT_Status, MT_Topic, MT_StartDate,\n"
      "  MT_PlanEndDate) VALUES ('3', 1, N'还没开始', '2999-01-01', '2999-02-01'),\n"
      "  ('3', 1, N'没有期限', '2020-01-01', NULL), ('3', 1, N'早该完成', '2020-01-01', "
      "'2020-02-01')"
      "\nGO\n");
  const std::string designer = opened("0");
  EXPECT_TRUE(holds(designer, "数据字典整理"));
  EXPECT_TRUE(holds(designer, "没有期限"));
  EXPECT_TRUE(holds(designer,
                    "<b>早该完成</b><span>2020-01-01 至 2020-02-01</span><em class=\"dt-late\">"));
  EXPECT_FALSE(holds(designer, "还没开始"));
  EXPECT_FALSE(holds(designer, "供应商年度评审"));  // another user's
  EXPECT_TRUE(holds(designer, "最近更改的查询方案"));
  signIn("22");
  const std::string clerk = opened("0");
  EXPECT_TRUE(holds(clerk, "没有待处理的任务"));
  EXPECT_FALSE(holds(clerk, "最近更改的查询方案"));
}

TEST_F(DesktopTest, SchemeComesFromTheCookieElseFromTheSession) {
  const std::tuple<const char*, const char*, const char*, const char*> kRows[] = {
      {"", "", "sea", ""},    {"3", "", "orange", "3"}, {"", "2", "olive", "2"},
      {"4", "2", "sun", "4"}, {"9", "2", "olive", "2"}, {"1\"", "x", "sea", "x"}};
  for (const auto& [cookie, before, word, after] : kRows) {
    local().request()["tarloStyle"] = cookie;
    local().session()["usrStyle"] = before;
    EXPECT_TRUE(holds(shell(), "data-scheme=\"" + std::string(word) + '"')) << cookie;
    EXPECT_EQ(session("usrStyle"), after) << cookie;
  }
}

// Pages reach for these by name and stop with a script error when one is missing.
TEST_F(DesktopTest, ShellHasWhatPagesReachFor) {
  const std::string text = shell();
  for (const char* id : {"startHeadtop", "startHead", "startFooter", "startFooterBottom",
                         "hiddenBarForLeft", "TarloTipInfo"})
    EXPECT_TRUE(holds(text, "<div id=\"" + std::string(id) + '"')) << id;
  for (const char* name : {"TarloY", "Zembra"})
    EXPECT_TRUE(holds(text, "<iframe name=\"" + std::string(name) + '"')) << name;
  EXPECT_TRUE(holds(text, "var g_sReady"));
  EXPECT_TRUE(holds(text, "顾清源"));
}

}  // namespace
}  // namespace tarlo::host
