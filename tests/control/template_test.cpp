// The template wizard: its dialog and steps, the level builder, saves, previews, shown templates.

#include <gtest/gtest.h>

#include "control/operations.h"
#include "control_data.h"
#include "support/golden_page.h"

namespace tarlo::control {
namespace {

using namespace tarlo::testing;

constexpr std::string_view kStored =
    "<script>parent.dialogArguments.SearchTable.reload();window.top.switchStep();</script>";

struct TemplateDatabase : ControlDatabase {
  // A system scheme of the table.
  std::string addSystemScheme(int table) {
    const std::string scheme = addScheme("s", "Query_System", "1");
    execute("update Zembra_Query_Main set Query_Prikey='" + std::to_string(table * 10) +
            "',Query_MainTBID=" + std::to_string(table) + " where Query_ID=" + scheme);
    return scheme;
  }
  std::string save(int kind) {
    ask("fieldtype", std::to_string(kind));
    return writtenBy([&] { savesearch_sysField(page()); });
  }
  std::string levels(const std::string& fields, const std::string& relations) {
    ask({{"Fields", fields}, {"rel", relations}});
    return writtenBy([&] { addSearchDlg_sysField2_2(page()); });
  }
  void askCascade(const std::string& scheme, const std::string& fields,
                  const std::string& relations) {
    ask({{"id", scheme}, {"queryid", scheme}, {"viewfields", fields}, {"rel", relations}});
  }
};

TEST(TemplateWizard, PagesOfTheDialog) {
  TemplateDatabase data;
  Page& page = data.page();
  expectGolden("template_wizard.html", data.writtenBy([&] { addSearchDlg_sysfield(page); }));
  expectGolden("system_schemes.html", inFrame(data, [&] { addSearchDlg_sysfield1_1(page); }));
  EXPECT_TRUE(holds(data.writtenBy([&] { addSearchDlg_sysfield1(page); }),
                    "SRC = \"/TarloQuery.Zembra?action=addSearchDlg_sysField&step=1_1\""));
  data.ask({{"id", data.addSystemScheme(11)}, {"fieldtype", "1"}});
  expectGolden("template_step.html", data.writtenBy([&] { addSearchDlg_sysField2(page); }));
  data.ask("fieldtype", "3");
  EXPECT_EQ(data.writtenBy([&] { addSearchDlg_sysField2(page); }), "");
}

using TemplateLevels = tarlo::testing::On<TemplateDatabase>;

TEST_F(TemplateLevels, EachLevelFollowsTheChosenRelation) {
  data.ask({{"id", data.addSystemScheme(12)}, {"fieldtype", "2"}});
  expectGolden("template_level_first.html",
               data.writtenBy([&] { addSearchDlg_sysField2(data.page()); }));
  expectGolden("template_level_next.html", data.levels("121", "120"));
  // Behind the last relation there is a field to show and nothing to go on by.
  const std::string last = data.levels("121|||111", "120|||110");
  EXPECT_TRUE(holds(last, "<value>101</value><text>Order.Sum</text>")) << last;
  EXPECT_FALSE(holds(last, "增加层次"));
  EXPECT_FALSE(holds(last, "switchStep"));
}

TEST_F(TemplateLevels, ATableThatNoRelationReachesGivesANotice) {
  data.ask("id", data.addSystemScheme(10));
  const std::string notice = data.levels("", "");
  EXPECT_TRUE(holds(notice, "主表没有联出关联，不能创建级联控件，请在数据库自定义中修改！"));
  EXPECT_FALSE(holds(notice, "viewFields"));
  EXPECT_TRUE(holds(notice, "window.top.switchStep();"));
}

TEST_F(TemplateLevels, WhatIsNotInTheDictionaryRaises) {
  data.ask("id", data.addSystemScheme(12));
  EXPECT_EQ(errorOf([&] { data.levels("999", "120"); }), 13);
  EXPECT_EQ(errorOf([&] { data.levels("121", "121"); }), 13);  // no relation by this field
  EXPECT_EQ(errorOf([&] { data.levels("121|||111", "120"); }), 9);
}

using SaveTemplate = tarlo::testing::On<TemplateDatabase>;

TEST_F(SaveTemplate, ADropDownOfOneTable) {
  const std::string scheme = data.addSystemScheme(11);
  // As the wizard posts them: line ends in front, and an empty box of the same name.
  data.askColumns(scheme, "\r\n[Customer].[ID]", ", \r\n[Customer].[City]");
  data.ask({{"queryid", scheme},
            {"QF_Name", "n"},
            {"QF_Desc", "d"},
            {"filter", " [Customer].[City],7,Paris,and\r\n"}});
  EXPECT_EQ(data.save(1), kStored);
  EXPECT_EQ(data.newest(),
            "n," + scheme +
                ",,,,[Customer],,select [Customer].[ID],[Customer].[City] from [Customer] where "
                "Zembra_Flag <> 0 and [Customer].[City] = 'Paris' ,d,1,1,1");
  EXPECT_TRUE(holds(data.save(1), "方案名称已存在"));
  data.ask("QF_Name", "it's");
  EXPECT_EQ(data.save(1), "<script>parent.sAlert('方案保存时出错！');</script>");
  data.ask("QF_Name", "");
  EXPECT_EQ(data.save(1), kStored);  // a template's name may be empty
  data.ask("filter", "[Customer].[City],7,it's,-1");
  EXPECT_EQ(data.save(1), "<script>parent.sAlert('得到的查询语句有错误，无法保存！');</script>");
}

// What is drawn and stored after a run that was logged is the text that the log has.
TEST_F(SaveTemplate, AStatementTooLongForTheLogIsTheLogsWords) {
  const std::string scheme = data.addSystemScheme(11);
  data.askColumns(scheme, "[Customer].[ID]", "[Customer].[City]");
  data.ask(
      {{"queryid", scheme}, {"filter", "[Customer].[City],3," + std::string(2000, 'x') + ",-1"}});
  EXPECT_TRUE(
      holds(data.writtenBy([&] { previewSearchdlg_sysField1(data.page()); }), "data = \"\" />"));
  EXPECT_EQ(data.save(1), kStored);
  EXPECT_TRUE(holds(data.newest(), ",Batch update,")) << data.newest();
}

TEST_F(SaveTemplate, ACascadeBeginsWithTheFieldChosenLast) {
  const std::string scheme = data.addSystemScheme(12);
  data.askCascade(scheme, "121|||111|||101", "120|||110");
  data.ask("QF_Name", "it's");
  EXPECT_EQ(data.save(2),
            "<div id=\"prediv\">\r\n<script>parent.sAlert('方案成功保存！');</script>"
            "<script>parent.dialogArguments.SearchTable.reload();</script>"
            "<script>window.top.switchStep();</script>");
  const std::string definition =
      "select [Orders].[ID],[Orders].[Amount] from [Orders] where Zembra_Flag<>0|||"
      "[Customer],[Customer].[ID],[Customer].[ID],[Customer].[City],Zembra_Flag <> 0;"
      "[Region],[Region].[ID],[Region].[ID],[Region].[Name],Zembra_Flag <> 0";
  EXPECT_EQ(data.newest(), "it's," + scheme + ",,,,," + definition + ",,2,1,1");
  // A deleted one keeps its name.
  data.execute("update Zembra_Query_Field set Zembra_Flag=0");
  EXPECT_TRUE(holds(data.save(2), "方案名称已存在"));
  data.ask("QF_Name", " ");
  EXPECT_TRUE(holds(data.save(2), "方案名称不能为空！"));
}

TEST_F(SaveTemplate, OneLevelIsNoCascadeAndTwoAre) {
  const std::string scheme = data.addSystemScheme(11);
  data.askCascade(scheme, "|||111", "");
  data.ask("QF_Name", "n");
  constexpr std::string_view kOneLevel =
      "<script>parent.sAlert('只选择了一层，不能做级联！');</script>";
  EXPECT_EQ(data.save(2), kOneLevel);
  EXPECT_EQ(data.writtenBy([&] { previewSearchdlg_sysField2(data.page()); }), kOneLevel);
  EXPECT_EQ(data.rows("select QF_ID from Zembra_Query_Field"), "Empty");
  data.askCascade(scheme, "111|||101", "110");
  EXPECT_TRUE(holds(data.save(2), "方案成功保存！"));
  EXPECT_TRUE(holds(data.newest(),
                    "|||[Customer],[Customer].[ID],[Customer].[ID],"
                    "[Customer].[City],Zembra_Flag <> 0,,2"));
}

using PreviewTemplate = tarlo::testing::On<TemplateDatabase>;

TEST_F(PreviewTemplate, DropDownCascadeAndTheDialogAroundThem) {
  Page& page = data.page();
  const std::string scheme = data.addSystemScheme(11);
  data.askColumns(scheme, "[Customer].[ID]", "[Customer].[City]");
  data.ask("filter", "[Customer].[City],6,o,or");
  expectGolden("template_drop_down_preview.html",
               data.writtenBy([&] { previewSearchdlg_sysField1(page); }));
  data.askCascade(scheme, "111|||101", "110");
  expectGolden("template_cascade_preview.html",
               data.writtenBy([&] { previewSearchdlg_sysField2(page); }));
  data.ask({{"filter", "[Customer].[City],7,it's,-1"}, {"fieldtype", "1"}});
  const std::string refused = data.writtenBy([&] { previewSearchdlg_sysField(page); });
  EXPECT_TRUE(holds(refused, "得到的查询语句有错误，无法预览！"));
  EXPECT_TRUE(holds(refused, "模板控件预览"));
  EXPECT_FALSE(holds(refused, "switchStep"));
}

TEST_F(PreviewTemplate, ACallersStatementRunsWhereItMay) {
  const std::string statement = "select ID,City from Customer where City<>'it''s'";
  data.ask({{"sql", statement}, {"rel", "a\"b"}});
  const auto show = [&] {
    return data.writtenBy([&] { showSearchpreview_SysField(data.page()); });
  };
  EXPECT_TRUE(holds(show(), "Paris"));
  EXPECT_TRUE(holds(show(), "<Tarlo:RelCombobox id=prew relation = \"a&quot;b\" src = \""));
  data.setApplication("statementsByUrl", false);
  EXPECT_FALSE(holds(show(), "Paris"));
  data.execute(
      "insert into Zembra_Query_Field (QF_Name,QF_Relation) values ('n','select ID,City from "
      "Customer where City<>''it''''s''|||rest')");
  EXPECT_TRUE(holds(show(), "Paris"));
}

TEST(ShowTemplate, DropDownAndCascadeOnly) {
  TemplateDatabase data;
  data.execute(
      "insert into Zembra_Query_Field (QF_Name,QF_FieldType,QF_System,QF_Relation) values "
      "('d',1,1,'select ID,City from Customer'),('c',2,1,'select ID,Amount from Orders|||levels'),"
      "('l',3,1,'select ID from Orders|||t')");
  for (const int kind : {1, 2, 3}) {
    data.ask("id", kind);
    expectGolden("show_template_" + std::to_string(kind) + ".html",
                 data.writtenBy([&] { showSearchDlg_sysField(data.page()); }));
  }
}

}  // namespace
}  // namespace tarlo::control
