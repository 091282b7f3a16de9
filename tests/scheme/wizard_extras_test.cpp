// What the wizard adds to its pages: reasons of refusals, rows, and changes meanwhile.

#include "scheme/extras.h"

#include <gtest/gtest.h>

#include "scheme/diagnosis.h"
#include "scheme/operations.h"
#include "support/wizard_support.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using tarlo::testing::holds;
using tarlo::testing::WizardDatabase;

compile::Definition definitionOf(const std::string& computed, const std::string& filter = "",
                                 const std::string& statistics = "",
                                 const std::string& grouping = "") {
  return {"10", computed, filter, statistics, grouping, "5"};
}

TEST(Diagnosis, NamesThePartAndTheReason) {
  const std::tuple<compile::Definition, std::string, std::string> rows[] = {
      {definitionOf("ok:1;bad:NOSUCH([101])"), "计算字段“bad”", "“NOSUCH”不存在"},
      {definitionOf("bad:1+"), "计算字段“bad”", "写法有误"},
      {definitionOf("", "101,1,1,and|||102,7,abc,-1"), "第 2 个过滤条件", "数据类型不符"},
      {definitionOf("N:[111]", "", "-1,4"), "第 1 个统计项", "数据类型不符"},
      {definitionOf("", "", "101,4|||111,6", "102"), "分组", "都应列入分组"},
  };
  for (const auto& [definition, where, reason] : rows) {
    WizardDatabase data;
    std::string statement;
    ErrorState err;
    err.run([&] { statement = compile::compileDefinition(data.page(), definition); });
    const Diagnosis found = diagnose(data.page(), definition, statement);
    EXPECT_EQ(found.where, where) << statement;
    EXPECT_TRUE(holds(found.reason, reason)) << found.reason << "\n" << statement;
    EXPECT_FALSE(holds(found.reason, "Orders")) << found.reason;
  }
}

std::string preview(WizardDatabase& data, const std::string& computed) {
  data.ask({{"TableName", "10"}, {"step1Virtual", computed}});
  return data.writtenBy([&] { previewSearchdlg(data.page()); });
}

TEST(PreviewExtras, ShowRowsAndStatementUnlessSwitchedOff) {
  WizardDatabase data;
  EXPECT_FALSE(holds(preview(data, "N:1"), "tarlo-extras"));
  data.setApplication("designerExtras", Variant());
  const std::string page = preview(data, "N:'<b>';O:null");
  EXPECT_TRUE(holds(page, "<td>&lt;b&gt;</td><td class=\"tarlo-null\">NULL</td>"));
  EXPECT_TRUE(holds(page, "<pre id=\"previewStatement\">select [Orders].[ID] as [Order.Key],"));
  EXPECT_TRUE(holds(preview(data, "N:NOSUCH()"), "<b>计算字段“N”</b>：“NOSUCH”不存在"));
  data.execute("update Orders set Zembra_Flag=0");
  EXPECT_TRUE(holds(preview(data, "N:1"), "没有记录。"));
}

TEST(SchemeState, ChangesWithTheRowAndNamesWhoChangedIt) {
  WizardDatabase data;
  data.setApplication("designerExtras", true);
  data.execute("insert into Zembra_User (User_Name,User_user) values ('一','a'),('李四','b')");
  const std::string id = data.addScheme("s", "Query_Desc", "'a'");
  EXPECT_TRUE(holds(wizardExtras(data.page(), id), schemeState(data.page(), id).stamp));
  const std::string before = schemeState(data.page(), id).stamp;
  EXPECT_EQ(schemeState(data.page(), id).stamp, before);
  data.execute(
      "update Zembra_Query_Main set Query_Desc='b',Zembra_ModiUser='2',"
      "Zembra_ModiDate='2024-05-06 07:08:09'");
  const SchemeState changed = schemeState(data.page(), id);
  EXPECT_NE(changed.stamp, before);
  EXPECT_EQ(changed.change, "李四已于 2024-05-06 07:08:09 修改过此方案");
  data.execute("update Zembra_Query_Main set Zembra_ModiUser='1'");
  EXPECT_TRUE(holds(schemeState(data.page(), id).change, "您在另一个窗口"));
  for (const std::string none : {"999", "", "1 or 1=1"}) {
    EXPECT_EQ(schemeState(data.page(), none).stamp, "");
    EXPECT_EQ(wizardExtras(data.page(), none), "");
  }
}

}  // namespace
}  // namespace tarlo::scheme
