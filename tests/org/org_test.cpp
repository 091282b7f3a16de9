// The directory's names, the lists of options, the limits on groups, the sub-actions.

#include <gtest/gtest.h>

#include "org/groups.h"
#include "org/operations.h"
#include "support/platform_database.h"

namespace tarlo::org {
namespace {

using testing::errorOf;
using testing::PlatformDatabase;
using testing::textOf;

class OrgTest : public ::testing::Test {
 protected:
  OrgTest() {
    data_.execute("insert into Zembra_Rank (Rank_name,Rank_Index) values (N'员工',1),(N'经理',3)");
    data_.execute("insert into Zembra_Quarters (Quarters_name) values (N'会计'),(N'出纳')");
    data_.execute(
        "insert into Zembra_Group (Group_name,Group_Type) values (N'财务部',0),(N'销售部',0),"
        "(N'设计员',1)");
    data_.execute(
        "insert into Zembra_User (User_Name,User_user,User_GroupID,User_joinGroupID,User_RankID,"
        "user_position,User_DeptID) values (N'首位','first',1,'',1,1,1),"
        "(N'钱多多','qian',2,'3,',2,2,1),(null,'nobody',99,',',2,99,99)");
    data_.execute(
        "insert into Zembra_ICON (icon_name,icon_file) values (N'文件夹','folder.gif'),"
        "(N'查询','query.gif')");
    data_.execute(
        "insert into Zembra_Menu (Menu_Name,Menu_Href) values (N'顶',null),(N'页','/p'),"
        "(null,null)");
  }

  Page& page() { return data_.page(); }

  PlatformDatabase data_;
};

TEST_F(OrgTest, NamesAreFoundByIdAndFallBackAsEachSays) {
  EXPECT_EQ(textOf(getUserNameByID(page(), 2)), "钱多多");
  EXPECT_EQ(textOf(getUserNameByID(page(), "77")), "");
  EXPECT_EQ(textOf(getUserPosition(page(), 2)), "出纳");
  EXPECT_EQ(textOf(getUserDeptID(page(), 2)), "2");
  EXPECT_EQ(textOf(getUserDeptName(page(), 2)), "销售部");
  EXPECT_EQ(textOf(getUserDeptName(page(), 3)), "空的");
  EXPECT_EQ(textOf(getDeptID(page(), 2)), "1");
  EXPECT_EQ(textOf(getDeptName(page(), 1)), "财务部");
  EXPECT_TRUE(getDeptName(page(), 99).isEmpty());
  data_.page().session.put("usrRank", 3);
  EXPECT_EQ(textOf(getUserRank(page())), "经理");
  data_.page().session.put("usrICID", 1);
  EXPECT_EQ(textOf(getHeaderTitle(page())), "顶");
  data_.page().session.put("usrICID", 77);
  EXPECT_EQ(textOf(getHeaderTitle(page())), "Zembra");
}

TEST_F(OrgTest, TheSystemsSenderHasNoRowAndNeedsNoDatabase) {
  data_.setApplication("strConn", "sqlite:/no/such/folder/x.db");
  for (const Variant& id : {Variant(1), Variant(-1), Variant("-1"), Variant(1.0)}) {
    EXPECT_EQ(textOf(getUserNameByID(page(), id)), "系统消息");
  }
}

TEST_F(OrgTest, ARefusedLookUpRaisesOnlyWhereItIsNotHandled) {
  const Variant hostile("1 or");
  EXPECT_NE(errorOf([&] { getUserPosition(page(), hostile); }), 0);
  EXPECT_NE(errorOf([&] { getDeptID(page(), hostile); }), 0);
  EXPECT_TRUE(getUserDeptID(page(), hostile).isEmpty());
  EXPECT_EQ(textOf(getUserDeptName(page(), hostile)), "空的");
  EXPECT_TRUE(getDeptName(page(), "it's").isEmpty());
  // Without a row there is no array to index.
  EXPECT_EQ(errorOf([&] { getUserPosition(page(), 77); }), 13);
  EXPECT_EQ(errorOf([&] { getDeptID(page(), 77); }), 13);
}

TEST_F(OrgTest, LooksForTheCurrentUserAreRefused) {
  for (const auto& operation :
       {RankLimit, getGroupID, getGroupName, getJoinGroupID, getGroupLimitSQL}) {
    EXPECT_NE(errorOf([&] { operation(page()); }), 0);
  }
  EXPECT_NE(errorOf([&] { getZembraGroupList(page(), "noall"); }), 0);
  EXPECT_NE(errorOf([&] { getJoinGroupList(page(), "", true); }), 0);
  EXPECT_NE(errorOf([&] { getRankList(page(), 1); }), 0);
}

TEST(GroupLimitTest, RankDecidesWhichGroupsAreSeen) {
  EXPECT_EQ(groupLimit(1, "7", "5,0"), " And 1<>1 ");
  EXPECT_EQ(groupLimit("2", "7", "5,0"), " And Group_ID = 7 ");
  EXPECT_EQ(groupLimit(3, "7", "5,0"), " And Group_ID in ( 7,5,0) ");
  EXPECT_EQ(groupLimit(4, "7", "5,0"), "");
  EXPECT_EQ(groupLimit(9, "7", "5,0"), std::nullopt);
  EXPECT_EQ(joinedGroups(" , "), "0");
  EXPECT_EQ(joinedGroups("5,"), "5,0");
  EXPECT_EQ(joinedGroups("5,6"), "5,6");
}

constexpr std::string_view kRoot = "<?xml version='1.0' encoding='gb2312'?><root>";

std::string option(std::string_view id, std::string_view name) {
  return "<option><value>" + std::string(id) + "</value><text>" + std::string(name) +
         "</text></option>";
}

TEST_F(OrgTest, XmlListsHoldAnOptionForEachRow) {
  const std::string root(kRoot);
  EXPECT_EQ(textOf(getPosition(page())),
            root + option("1", "会计") + option("2", "出纳") + "</root>");
  EXPECT_EQ(textOf(getDeptList(page())),
            root + option("1", "财务部") + option("2", "销售部") + "</root>");
  EXPECT_EQ(groupList(page(), " And Group_ID = 3 ", "all"),
            root + option("-1", "所有部门") + option("3", "设计员") + "</root>");
  EXPECT_EQ(groupList(page(), " And Group_ID = 3 ", "noall"),
            root + option("3", "设计员") + "</root>");
}

TEST_F(OrgTest, GroupsAreSplitByPositionInTheMemberList) {
  const auto ids = [&](const Variant& members, const Variant& inside) {
    std::string found;
    const std::string list = joinGroupList(page(), "", members, inside);
    for (const char* id : {"1", "2", "3"}) {
      if (testing::holds(list, "<value>" + std::string(id) + "<")) found += id;
    }
    return found;
  };
  EXPECT_EQ(ids("2,3,", true), "23");
  EXPECT_EQ(ids("2,3,", false), "1");
  EXPECT_EQ(ids("13,", true), "3");  // "3," stands in "13,"
  EXPECT_EQ(ids(variant::Null{}, false), "123");
  EXPECT_EQ(ids(variant::Null{}, true), "");
  EXPECT_EQ(joinGroupList(page(), " And 1<>1 ", "", false), kRoot);  // never closed
}

TEST_F(OrgTest, HtmlAndScriptListsAreWrittenToThePage) {
  EXPECT_EQ(data_.writtenBy([&] { getUserListGroup(page(), 2, "2"); }),
            "<option selected value=2>qian</option>");
  EXPECT_EQ(data_.writtenBy([&] { getMenuParentList(page(), 5); }),
            "<option value=0>顶级菜单</option><option value=1>顶</option>");
  const std::string icons = data_.writtenBy([&] { getIconList(page(), 2); });
  EXPECT_EQ(icons.substr(0, 132),
            "                                topArray[0] = new Option('<nobr title=\"查询\"><img "
            "src=\"/images/icon/query.gif\" width=16 height=16 ");
  EXPECT_TRUE(testing::holds(icons, "</nobr>', \"2\");\r\n"));
  EXPECT_TRUE(testing::holds(icons, "topArray[2] = "));  // the icon itself, then both
}

TEST_F(OrgTest, ASubActionIsLookedForWithItsComma) {
  data_.execute(
      "insert into Zembra_Permission (Permission_UserID,Permission_MenuID,Permission_SubAction) "
      "values (1,101,'quickadd,delete,'),(1,102,'add,')");
  const auto isAllowed = [&](std::string_view name) {
    return variant::toBoolean(allowSubActionTableList(page(), name));
  };
  EXPECT_TRUE(isAllowed("delete"));
  EXPECT_TRUE(isAllowed("add"));  // the end of "quickadd,"
  EXPECT_FALSE(isAllowed("quick"));
  EXPECT_FALSE(isAllowed("browse"));
  EXPECT_EQ(textOf(allowSubActionHTML(page(), "delete", "<b>")), "<b>");
  EXPECT_EQ(textOf(allowSubActionHTML(page(), "browse", "<b>")), " ");
  EXPECT_EQ(data_.writtenBy([&] {
    allowSubAction(page(), "delete", "x");
    allowSubAction(page(), "browse", "y");
    allowSubActionTest(page(), "delete", "z");
    allowSubActionTest(page(), "browse", "w");
  }),
            "x z");
  EXPECT_NE(errorOf([&] { allowSubActionTableList(page(), "it's"); }), 0);
}

}  // namespace
}  // namespace tarlo::org
