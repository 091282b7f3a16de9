#include <gtest/gtest.h>

#include "control/operations.h"
#include "control_data.h"
#include "support/golden_page.h"

namespace tarlo::control {
namespace {

using namespace tarlo::testing;

std::string step(ControlDatabase& data, int kind, const std::string& scheme) {
  data.ask({{"fieldtype", std::to_string(kind)}, {"queryid", scheme}});
  return data.writtenBy([&] { addSearchDlg_UsrField2(data.page()); });
}

using FieldWizard = tarlo::testing::On<ControlDatabase>;

TEST_F(FieldWizard, TheDialogAndItsFrames) {
  expectGolden("field_wizard.html", data.writtenBy([&] { addSearchDlg_UsrField(data.page()); }));
  EXPECT_EQ(inFrame(data, [&] { getQueryTable(data.page()); }), "&nbsp;\r\n");
  expectGolden("frame_wrapper.html", data.writtenBy([&] { addSearchDlg_UsrField1(data.page()); }));
  const auto list = [&] { addSearchDlg_UsrField1_1(data.page()); };
  data.ask("field1", "1");
  expectGolden("user_schemes.html", inFrame(data, list));
  data.ask("field1", "3");  // a list takes schemes with statistics
  EXPECT_FALSE(holds(data.writtenBy(list), "Query_HasStatic"));
}

TEST_F(FieldWizard, SchemesAsADropDown) {
  data.addOrders();
  data.addCounts();
  data.execute("update Zembra_Query_Main set Query_Dic=1,Query_Name=' ' + Query_Name + '''s '");
  data.ask("contrltype", "1");
  EXPECT_TRUE(holds(data.writtenBy([&] { addSearchDlg_UsrField1_2(data.page()); }),
                    "请选查询方案...<<<<<<-1>>>>>>orders\\'s<<<<<<1\\\""));
}

TEST_F(FieldWizard, ADropDownsFieldsFollowTheRelatingField) {
  const std::string scheme = data.addOrders();
  expectGolden("drop_down_step.html", step(data, 1, scheme));
  data.ask("relfield", "102");
  const std::string related = step(data, 1, scheme);
  EXPECT_TRUE(holds(related, "SelectValue=\\\"102\\\""));
  EXPECT_TRUE(holds(related,
                    "data=\\\"Client.Key<<<<<<[Customer].[ID]>>>>>>Client.Town<<<<<<"
                    "[Customer].[City]\\\""));
  // Without relations the main table stays.
  data.execute("update Zembra_Query_Main set Query_MultiRelSel=''");
  EXPECT_TRUE(holds(step(data, 1, scheme), "Order.Key<<<<<<[Orders].[ID]>>>>>>"));
  EXPECT_TRUE(holds(step(data, 1, "99"), "方案主表<<<<<<-1\\\""));  // and nothing raises
}

TEST_F(FieldWizard, AListsColumnsAndTitles) {
  const std::string scheme = data.addOrders();
  expectGolden("list_step.html", step(data, 3, scheme));
  EXPECT_EQ(errorOf([&] { step(data, 3, "99"); }), 13);
  EXPECT_EQ(step(data, 5, scheme), "");

  const auto titles = [&] { addSearchDlg_UsrField3(data.page()); };
  data.ask({{"id", scheme}, {"viewfield", "undefined,2,3,1"}});
  expectGolden("titles_step.html", data.writtenBy(titles));
  for (const char* none : {"", "undefined"}) {
    data.ask("viewfield", none);
    EXPECT_EQ(data.writtenBy(titles), "<script>parent.sAlert('请选择显示字段！',0);</script>");
  }
}

TEST_F(FieldWizard, TheCascadePageIsKept) {
  const std::string scheme = data.addOrders();
  expectGolden("cascade_page.html", inDialog(data, "新增控件关系", [&] {
                 addSearchDlg_UsrField2_2(data.page(), scheme);
               }));
  EXPECT_EQ(errorOf([&] { step(data, 2, "99"); }), 13);
}

TEST(ControlManager, PagesOfUsersAndTemplates) {
  tarlo::testing::PageDatabase data;
  expectGolden("manager_user.html",
               inPage(data, "用户控件方案自定义", [&] { ctrlSearch_Usrfield(data.page()); }));
  expectGolden("manager_template.html",
               inPage(data, "模板控件方案自定义", [&] { ctrlSearch_Sysfield(data.page()); }));
}

// A dialog of another library: no more and no fewer than two arguments, and it writes by itself.
class TwoPartDialog : public Object {
 public:
  Variant get(std::string_view, std::span<Variant>) override { return {}; }
  void put(std::string_view, const Variant&) override {}
  Variant call(std::string_view name, std::span<Variant> arguments) override {
    if (name != "ASPConnect") return {};
    if (arguments.size() != 2) throw RuntimeError(ErrorNumber::WrongArgumentCount);
    Variant key("usrID");
    const Variant user = arguments[0].object()->get("", std::span(&key, 1));
    Variant words("drawn for " + variant::toText(user));
    arguments[1].object()->call("Write", std::span(&words, 1));
    return {};
  }
};

TEST_F(FieldWizard, ADialogThatTakesTwoPartsOfThePageWorks) {
  for (const char* name : {"TarloDialog.WebDialog", "TarloDialog.SingleDialog"})
    data.local().registerObject(name, [] { return std::make_shared<TwoPartDialog>(); });
  Page& page = data.page();
  for (const auto operation : {addSearchDlg_UsrField, addSearchDlg_sysfield, addsearchdlg_UsrModel,
                               showSearchDlg_UsrField, showSearchDlg_sysField})
    EXPECT_EQ(data.writtenBy([&] { operation(page); }), "drawn for 1");
}

TEST(ControlManager, OnlyTheTemplatesDeleteLooksAtTheError) {
  constexpr std::string_view kDeleted =
      "<script>top.sAlert('此控件关系已经从系统中删除！',false);parent.SearchTable.reload();"
      "</script>";
  for (const bool isTemplate : {false, true}) {
    ControlDatabase data;
    const auto remove = [&](std::string_view ids) {
      data.ask("ID", ids);
      return data.writtenBy(
          [&] { (isTemplate ? delSearch_sysField : delSearch_UsrField)(data.page()); });
    };
    data.execute("insert into Zembra_Query_Field (QF_Name) values ('a'),('b'),('c')");
    EXPECT_EQ(remove("1,3"), kDeleted);
    EXPECT_EQ(data.rows("select QF_Name from Zembra_Query_Field where Zembra_Flag<>0"), "b");
    EXPECT_EQ(remove(""),
              isTemplate ? "<script>top.sAlert('删除控件关系出错！');</script>" : kDeleted);
  }
}

}  // namespace
}  // namespace tarlo::control
