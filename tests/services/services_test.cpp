// Data sources, action help and the floating dialog.

#include <gtest/gtest.h>

#include "services/data_sources.h"
#include "services/operations.h"
#include "support/dictionary.h"
#include "support/golden_page.h"
#include "support/text.h"

namespace tarlo::services {
namespace {

using testing::errorOf;
using testing::holds;
using testing::textOf;

constexpr const char* kColours =
    "select 1,'Red' union all select 2,'Green' union all select 3,'Blue'";

TEST(DataSources, ADelimitedSourceEndsWithTheLastMatch) {
  const std::tuple<std::string, Variant, std::string> rows[] = {
      {kColours, "2", "<Red<1<Green<2<Blue<3>1"},
      {kColours, 3, "<Red<1<Green<2<Blue<3>2"},
      {kColours, "", "<Red<1<Green<2<Blue<3>"},
      {"select null,'None' union all select 1,'a<b'", "", "<None<<a<b<1>0"},
      {"select 1,'a' union all select 1,'b'", "1", "<a<1<b<1>1"},
      {"select 1,'a' where 1=0", "1", "Empty"},
  };
  testing::DictionaryDatabase data;
  for (const auto& [sql, given, source] : rows) {
    Variant wanted = given;
    EXPECT_EQ(textOf(TarloCBODataSource(data.page(), sql, wanted)), source) << sql;
  }
  Variant wanted = variant::Null{};
  TarloCBODataSource(data.page(), kColours, wanted);
  EXPECT_EQ(textOf(wanted), "");  // the caller's variable
  EXPECT_NE(errorOf([&] { TarloCBODataSource(data.page(), "select nope", wanted); }), 0);
}

TEST(DataSources, XmlOfComboBoxesAndOfButtons) {
  testing::DictionaryDatabase data;
  Page& page = data.page();
  EXPECT_EQ(textOf(GetComboBoxXMLs(page, "select ' 1 ','a&b<''\"'")),
            "<?xml version = '1.0' encoding = 'gb2312'?><root><option><value>1</value>"
            "<text>a&amp;b&lt;''&quot;</text></option></root>");
  EXPECT_EQ(textOf(GetRadioOrCheckBoxXML(page, "select ' 1 ','a&b'")),
            "<?xml version='1.0' encoding='gb2312'?><root><part><value> 1 </value>"
            "<text>a&b</text></part></root>");
  EXPECT_TRUE(GetComboBoxXMLs(page, "select 1,2 where 1=0").isEmpty());
  EXPECT_TRUE(GetRadioOrCheckBoxXML(page, "select 1,2 where 1=0").isEmpty());
  EXPECT_TRUE(GetComboBoxXMLs(page, "select nope").isEmpty());
  // A row without a caption has no option, and raises nothing.
  EXPECT_EQ(textOf(GetComboBoxXMLs(page, "select 1")),
            "<?xml version = '1.0' encoding = 'gb2312'?><root></root>");
  EXPECT_EQ(errorOf([&] { GetRadioOrCheckBoxXML(page, "select 1"); }), 9);
  EXPECT_NE(errorOf([&] { GetRadioOrCheckBoxXML(page, "select nope"); }), 0);
}

TEST(OptionList, JoinsWithAndWithoutTheLastMark) {
  OptionList options;
  EXPECT_EQ(options.joined(), "");
  options.add("a", "1");
  options.add("b", "-2");
  EXPECT_EQ(options.text(), "a<<<<<<1>>>>>>b<<<<<<-2>>>>>>");
  EXPECT_EQ(options.joined(), "a<<<<<<1>>>>>>b<<<<<<-2");
}

TEST(ActionHelp, JoinsTheRowsOfTheSessionsModule) {
  testing::DictionaryDatabase data;
  Page& page = data.page();
  page.session.put("usrICID", 7);
  EXPECT_NE(errorOf([&] { getActionHelp(page, "go"); }), 0);  // not swallowed
  data.runScript(
      "CREATE TABLE Zembra_Functions (Func_ID int, Func_MenuID int, Func_Action nvarchar(50))\nGO\n"
      "CREATE TABLE Zembra_SubHelp (SubHelp_ID int, SubHelp_FuncID int, SubHelp_title "
      "nvarchar(50), "
      "SubHelp_popup nvarchar(200))\nGO\n");
  data.execute("insert into Zembra_Functions values (1,7,'go'),(2,8,'go')");
  data.execute(
      "insert into Zembra_SubHelp values (2,1,'B','three'),(1,1,'A','one' + CHAR(13) + CHAR(10) + "
      "CHAR(13) + CHAR(10) + 'two'),(3,2,'C','other module')");
  EXPECT_EQ(textOf(getActionHelp(page, "GO")), "<li>one</li><li>twothree</li>");
  EXPECT_EQ(textOf(getActionHelpTitle(page, "go")), "AB");
  EXPECT_EQ(textOf(getActionHelp(page, "stay")), "暂时没有相关的帮助");
  EXPECT_EQ(textOf(getActionHelpTitle(page, "stay")), "暂时没有相关的主题");
}

std::string dialog(const Variant& width, const Variant& height, const Variant& buttons,
                   int& error) {
  database::Registry databases;
  frame::LocalPage local(databases, "sqlite:none.db");
  error = errorOf([&] {
    TarloDivDialog(local.page(), "box", "T", "Topic", width, height, "<p>body</p>", buttons);
  });
  return local.written();
}

TEST(DivDialog, IsWrittenWithStandardButtonsUnlessSomeAreGiven) {
  int error = 0;
  const std::string page = dialog(400, "300", "", error);
  EXPECT_EQ(error, 0);
  testing::expectGolden("div_dialog.html", page);
  EXPECT_TRUE(holds(dialog(400, 300, "[own]", error), "<div id=winBtnID>[own]</div>"));
}

TEST(DivDialog, AWrongSizeStopsBehindTheStartOfTheBox) {
  for (const auto& [width, number] : {std::pair{Variant("wide"), 13}, std::pair{Variant(40000), 6},
                                      std::pair{Variant(-32768), 6}}) {
    int error = 0;
    const std::string page = dialog(width, 300, "", error);
    EXPECT_EQ(error, number);
    EXPECT_TRUE(page.starts_with("    <div neo=comboParent   id=box "));
    EXPECT_FALSE(holds(page, "<table"));
  }
}

}  // namespace
}  // namespace tarlo::services
