#include "scheme/operations.h"

#include <gtest/gtest.h>

#include "support/page_support.h"
#include "support/text.h"
#include "variant/runtime_error.h"

namespace tarlo::scheme {
namespace {

using tarlo::testing::holds;

using ModuleLinks = tarlo::testing::On<tarlo::testing::PageDatabase>;

TEST_F(ModuleLinks, FoldersEntriesAndTheCurrentModule) {
  const std::string text = variant::toText(showLinksq(data.page(), ""));
  // In menu order; no forbidden or nameless module, and of the folder only what opens something.
  const char* const pieces[] = {
      "    <td class=\"TarloDivHeadsea\" style=\"cursor: default\">相关链接</td>\r\n",
      "cellpadding=\"2\" cellspacing=\"0\">\r\n<tr><td style=\"cursor:hand\">&nbsp;&nbsp;&nbsp;"
      "&nbsp;<img onclick=toolBarAdd(102) src=",
      "desc=\"\" onmouseover=\"doLinkOver(this)\" onclick=\"top.window.Zembra.location="
      "'./?cmdID=102';\"> 控件方案</span></td></tr><tr><td ",
      "onclick=toolBarAdd(101) align=\"absmiddle\">&nbsp;&nbsp;<span  onmouseout",
      "desc=\"it's\"  style='width:120px;color=gray;cursor:default'>查询方案</span></td></tr>"
      "<tr id= Sub103><td onclick=\"linkStatus(Sub103)\" ",
      "<b>更多</b></span></td></tr><tr style='display:none' id= Sub103><td id= Sub103 style=",
      "desc=\"说明\"  onclick=\"top.window.Zembra.location='./?cmdID=104';\">帮助</span></td></tr>"
      "      </table>"};
  std::size_t at = 0;
  for (const char* piece : pieces) {
    at = text.find(piece, at);
    ASSERT_NE(at, std::string::npos) << piece << "\nin " << text;
  }
  EXPECT_TRUE(text.ends_with("</tr>      </table>"));
  for (const char* absent : {"禁止", "cmdID=107", "空", "Sub105"})
    EXPECT_FALSE(holds(text, absent)) << absent;
}

TEST_F(ModuleLinks, NoPaneWithoutAModuleOrWithoutRows) {
  data.setSession("usrID", 3);
  EXPECT_TRUE(showLinksq(data.page(), "").isEmpty());
  // No statement runs: without a user it would be refused.
  data.setSession("usrID", Variant());
  for (const Variant& module : {Variant("x"), Variant(), Variant("99999999999")}) {
    data.setSession("usrICID", module);
    EXPECT_TRUE(showLinksq(data.page(), "").isEmpty());
  }
  data.setSession("usrICID", 101);
  EXPECT_THROW(showLinksq(data.page(), ""), RuntimeError);
}

TEST_F(ModuleLinks, PlaceAndWorkflowOfTheModule) {
  const std::tuple<Variant, bool, std::string> rows[] = {
      {101, true, "False"},
      {"102", true, "3"},        // the newest of the family
      {205, false, "error 13"},  // a family without a workflow
      {999, true, "False"}};
  for (const auto& [module, isElsewhere, expected] : rows) {
    data.setSession("usrICID", module);
    EXPECT_EQ(variant::toBoolean(isNotWorkflowChild(data.page())), isElsewhere);
    std::string workflow;
    try {
      workflow = variant::toText(getModuleWorkflow(data.page()));
    } catch (const RuntimeError& error) {
      workflow = "error " + std::to_string(error.number());
    }
    EXPECT_EQ(workflow, expected);
  }
  data.setSession("usrICID", 40000);
  EXPECT_THROW(isNotWorkflowChild(data.page()), RuntimeError);
}

}  // namespace
}  // namespace tarlo::scheme
