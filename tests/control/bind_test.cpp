// The bind wizard: its dialog and lists, and the save.

#include <gtest/gtest.h>

#include "control/operations.h"
#include "control_data.h"
#include "support/golden_page.h"

namespace tarlo::control {
namespace {

using namespace tarlo::testing;

// A template on a system scheme over Customer, and a user's scheme over Orders, which is related
// to Customer by two fields.
struct BindDatabase : ControlDatabase {
  BindDatabase() {
    const std::string system = addScheme("customers", "Query_System", "1");
    execute("update Zembra_Query_Main set Query_MainTBID=11,Query_Prikey='110' where Query_ID=" +
            system);
    scheme = addScheme("orders", "Query_MultiRelSel,Query_System", "'5,6',0");
    addTemplate(system, "select ID,City from Customer");
  }
  void addTemplate(const std::string& system, const std::string& definition) {
    execute(
        "insert into Zembra_Query_Field (QF_Name,QF_NameID,QF_Field,QF_CField,QF_Table,QF_CTable,"
        "QF_Relation,QF_FieldType,QF_System) values ('t'," +
        system + ",',','cf','[Customer]','ct','" + definition + "',1,1)");
    original = rows("select max(QF_ID) from Zembra_Query_Field");
  }
  std::string save(const std::string& name, const std::string& queryid) {
    ask({{"QF_Name", name}, {"QF_Desc", "it's"}, {"modelid", scheme}, {"queryid", queryid}});
    return writtenBy([&] { addSearchDlg_UsrModel3(page()); });
  }
  std::string templates() {
    ask("id", scheme);
    return writtenBy([&] { addSearchDlg_UsrModel2(page()); });
  }

  std::string scheme, original;
};

using BindWizard = tarlo::testing::On<BindDatabase>;

TEST_F(BindWizard, PagesOfTheDialog) {
  expectGolden("bind_wizard.html", data.writtenBy([&] { addsearchdlg_UsrModel(data.page()); }));
  expectGolden("bind_schemes.html", inFrame(data, [&] { addSearchDlg_UsrModel1_1(data.page()); }));
  data.ask("id", data.scheme);
  expectGolden("bind_templates.html", inFrame(data, [&] { addSearchDlg_UsrModel2(data.page()); }));
  EXPECT_TRUE(holds(data.writtenBy([&] { addSearchDlg_UsrModel1(data.page()); }),
                    "iojoijoij<iframe name=\"postarea\""));
}

TEST_F(BindWizard, ATemplateIsListedOnceForEachRelation) {
  const std::string page = data.templates();
  const std::string sql = testing::between(page, "grid.sql = <", ">\r\n").substr(12);
  EXPECT_EQ(data.rows("select id, [关联字段] from (" + sql + ") x order by id"),
            "         1|102,Cust |          1|103,Ship");
}

TEST_F(BindWizard, WithoutRelationsTheListIsEmpty) {
  data.execute("update Zembra_Query_Main set Query_MultiRelSel=''");
  EXPECT_TRUE(holds(data.templates(), "grid.sql = <>\r\n"));
  data.execute("update Zembra_Query_Main set Query_MainTBID=null");
  EXPECT_TRUE(holds(data.templates(), "grid.sql = <>\r\n"));
}

using BindSave = tarlo::testing::On<BindDatabase>;

TEST_F(BindSave, CopiesTheTemplateAndAddsTheField) {
  EXPECT_EQ(data.save("b'1", "         1|103"),
            "<script>window.top.switchStep();\r\n"
            "parent.dialogArguments.SearchTable.reload();</script>");
  EXPECT_EQ(data.newest(), "b'1," + data.scheme +
                               ",,,cf,[Customer],ct,select ID,City from Customer|||103,it's,1,0,1");
}

TEST_F(BindSave, WhatIsRefusedWritesNothing) {
  EXPECT_TRUE(holds(data.save(" ", "1|102"), "此控件名称不能为空，请填写名称！"));
  EXPECT_TRUE(
      holds(data.save("b", "1|101"), "此模板控件不能跟此查询方案关联"));  // not related by it
  EXPECT_NE(errorOf([&] { data.save("b", "1"); }), 0);
  EXPECT_NE(errorOf([&] { data.save("b", "77|102"); }), 0);
  EXPECT_EQ(data.rows("select count(*) from Zembra_Query_Field"), "1");
  data.save("b", "1|102");
  EXPECT_TRUE(holds(data.save("b", "1|102"), "此控件名称已存在，请使用另一名称！"));
  // Quotes of the template's definition are not doubled.
  data.addTemplate(data.rows("select QF_NameID from Zembra_Query_Field where QF_ID=1"),
                   "select ID,City from Customer where City=''Paris''");
  EXPECT_TRUE(holds(data.save("c", data.original + "|102"), "得到的查询语句有错误，无法保存！"));
}

}  // namespace
}  // namespace tarlo::control
