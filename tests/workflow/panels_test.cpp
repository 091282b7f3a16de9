// The desktop's panels: what their statements find, and how the panels look.

#include <gtest/gtest.h>

#include "support/golden_page.h"
#include "support/platform_database.h"
#include "workflow/operations.h"

namespace tarlo::workflow {
namespace {

using testing::errorOf;
using testing::holds;
using testing::PlatformDatabase;
using testing::textOf;

class PanelsTest : public ::testing::Test {
 protected:
  Page& page() { return data_.page(); }
  void addTask(std::string_view user, std::string_view topic, int starts, int ends) {
    data_.execute(
        "insert into Zembra_MyTask_Record (MT_UserID,MT_Status,MT_Topic,MT_StartDate,"
        "MT_PlanEndDate) values ('" +
        std::string(user) + "',1,N'" + std::string(topic) + "',DateAdd(d," +
        std::to_string(starts) + ",getdate()),DateAdd(d," + std::to_string(ends) + ",getdate()))");
  }
  // Markup of the rows that the statement gives, in order.
  std::vector<std::string> cells(const std::string& sql, std::size_t column) {
    std::vector<std::string> found;
    for (const frame::Row row : frame::rows(page(), sql)) found.push_back(row.text(column));
    return found;
  }

  PlatformDatabase data_;
};

TEST_F(PanelsTest, OpenTasksAreCutAndLateOnesRed) {
  addTask("5", "一二三四五六七八", -3, 0);
  addTask("5", "一二三四五六七八九", -3, -1);
  addTask("5", "还没有开始", 2, 9);
  addTask("6", "别人的", -3, 9);
  const auto found = cells(openTasksStatement("5"), 0);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_TRUE(found[0].ends_with("<font color=red>一二三四五六七八...</font></span>")) << found[0];
  EXPECT_TRUE(found[1].ends_with(",680,510);\">一二三四五六七八</span>")) << found[1];
  EXPECT_TRUE(holds(found[1], "showWebDialog('TarloMyScheme.Zembra?action=AddMyTask&sFlag=0&"));
}

TEST_F(PanelsTest, ThePanelOfTasksFindsThoseOfNobody) {
  addTask("1", "当前用户的", -3, 9);
  const std::string empty = data_.writtenBy([&] { MergeGetMyTaskInFirst(page()); });
  testing::expectGolden("tasks_none.html", empty);
  EXPECT_FALSE(holds(empty, "更多"));
  data_.execute(
      "insert into Zembra_MyTask_Record (MT_UserID,MT_Status,MT_Topic,MT_StartDate,"
      "MT_PlanEndDate) values ('',1,N'无主任务','2001-02-03','2099-10-11')");
  testing::expectGolden("tasks.html", data_.writtenBy([&] { MergeGetMyTaskInFirst(page()); }));
}

class WaitingTest : public PanelsTest {
 protected:
  WaitingTest() {
    data_.execute("insert into Zembra_WorkFlow_Custom (WF_SameFlag,WF_WorkName) values (7,70)");
    data_.execute(
        "insert into Zembra_Menu (Menu_Name,Menu_AddType,Menu_AddValue) values (N'报销',1,7)");
    data_.execute("insert into Zembra_WorkFlow_PerDot (WFPS_NoName) values (N'财务复核'),('')");
    data_.execute("insert into Zembra_WorkFlowInstance_Handle (WFH_Name) values (N'补充资料')");
    addInstance(11, 1, 5, 2, "十月差旅报销");
    addInstance(12, 2, 5, 2, "九月报销");
    addInstance(13, 1, 6, 2, "委托的");
    addInstance(14, 1, 5, 1, "已处理");
    data_.execute(
        "insert into Zembra_WFInstance_ExchangePermission values "
        "(6,5,DateAdd(d,-1,getdate()),DateAdd(d,1,getdate()))");
  }
  void addInstance(int id, int step, int user, int action, std::string_view name) {
    const std::string number = std::to_string(id);
    data_.execute(
        "insert into Zembra_WorkFlowInstance_Main (WFI_InstanceID,WFI_WorkFlowID,"
        "WFI_WorkFlowStepID,WFI_Status,WFI_NeedUser,WFI_Action) values (" +
        number + ",1," + std::to_string(step) + ",1," + std::to_string(user) + "," +
        std::to_string(action) + ")");
    data_.execute("insert into Zembra_WorkFlowInstance_Attribute values (" + number + ",N'" +
                  std::string(name) + "')");
  }
};

TEST_F(WaitingTest, StepsWaitDirectlyOrThroughADelegation) {
  const std::string sql = waitingStepsStatement("5");
  const auto names = cells(sql, 0);
  ASSERT_EQ(names.size(), 3u);
  EXPECT_TRUE(names[0].ends_with(">报销:委托的")) << names[0];
  EXPECT_TRUE(names[1].ends_with(">报销:九月报销")) << names[1];
  EXPECT_TRUE(names[2].ends_with(">报销:十月差旅报...")) << names[2];
  EXPECT_TRUE(holds(names[2], "&intPermission=0&intWorkFlowSame=70&intSort=1&intUID=1'"));
  const auto states = cells(sql, 1);
  EXPECT_TRUE(states[1].ends_with("等待补充资料")) << states[1];
  EXPECT_TRUE(states[2].ends_with("等待财务复核")) << states[2];
}

TEST_F(WaitingTest, WithoutAUserNothingIsWritten) {
  const std::string written =
      data_.writtenBy([&] { EXPECT_NE(errorOf([&] { WorkFlowWaitingForDealList(page()); }), 0); });
  EXPECT_EQ(written, "");
  EXPECT_NE(errorOf([&] { doFindPermissionWFI(page(), 1, "", ""); }), 0);
  EXPECT_NE(errorOf([&] { doGetWFIName(page(), 1, "", "", ""); }), 0);
}

TEST_F(PanelsTest, TheSessionsLastGridGivesItsSecondStatementWhereItHasOne) {
  EXPECT_TRUE(getCurrentResultSet(page()).isEmpty());
  const auto draw = [&](std::string_view first, std::string_view second) {
    data_.execute(
        "insert into Zembra_Temp_TarloTable (TarloTable_SessionID,TarloTable_SQLString,"
        "TarloTable_SQLString2) values ('" +
        page().session.id() + "','" + std::string(first) + "'," + std::string(second) + ")");
    return textOf(getCurrentResultSet(page()));
  };
  EXPECT_EQ(draw("a", "''"), "a");
  EXPECT_EQ(draw("b", "null"), "b");
  EXPECT_EQ(draw("c", "'c2'"), "c2");
}

}  // namespace
}  // namespace tarlo::workflow
