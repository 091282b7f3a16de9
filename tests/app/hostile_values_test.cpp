// Values that would end their place stay in it: in every hole of every page text, and in what the
// operations write on rows and requests full of them.

#include <gtest/gtest.h>

#include <set>

#include "app/operation_examples.h"
#include "cli_fixture.h"
#include "component/operations.h"
#include "component/tarlo_query.h"
#include "embedded_control_pages.h"
#include "embedded_frame_pages.h"
#include "embedded_host_pages.h"
#include "embedded_org_pages.h"
#include "embedded_scheme_pages.h"
#include "embedded_services_pages.h"
#include "embedded_siblings_pages.h"
#include "embedded_workflow_pages.h"
#include "frame/data.h"
#include "frame/local_page.h"
#include "frame/page_text.h"
#include "host/desktop/desktop.h"
#include "siblings/siblings.h"
#include "support/page_structure.h"
#include "support/shell_words.h"
#include "support/text.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/convert.h"

namespace tarlo::app {
namespace {

using tarlo::testing::holds;

using tarlo::testing::structureOf;

// Ends every place that it is put into as it is, and has the word as a name behind it. The lists of
// schemes part their items by , ; and |, which it does not hold.
constexpr std::string_view kWord = "pwned";
constexpr std::string_view kHostile =
    "x\"><pwned a='><pwned></textarea></title></script><pwned>--><pwned><!--\\'+pwned()+\\\"+"
    "pwned()+'\r\npwned()\r\npwned=1 \u2028pwned()\\";

// For columns that hold no more.
constexpr std::string_view kShort = "\"><pwned '><pwned>\\'+pwned()+\\\"+pwned()";

bool acts(const std::string& page) {
  const auto structure = structureOf(page);
  return structure.names.contains(std::string(kWord)) ||
         structure.names.contains("a broken string");
}

// ---- page texts

struct PageText {
  std::string name;
  std::string_view text;
};

template <class File>
void addTexts(std::span<const File> files, std::string_view folder, std::vector<PageText>& texts) {
  for (const File& file : files) {
    const bool isPage = file.name.ends_with(".html") || file.name.ends_with(".js");
    if (isPage) texts.push_back({std::string(folder) + std::string(file.name), file.text});
  }
}

std::vector<PageText> pageTexts() {
  std::vector<PageText> texts;
  addTexts(embedded::control_pages::files(), "control/", texts);
  addTexts(embedded::frame_pages::files(), "frame/", texts);
  addTexts(embedded::host_pages::files(), "host/", texts);
  addTexts(embedded::org_pages::files(), "org/", texts);
  addTexts(embedded::scheme_pages::files(), "scheme/", texts);
  addTexts(embedded::services_pages::files(), "services/", texts);
  addTexts(embedded::siblings_pages::files(), "siblings/", texts);
  addTexts(embedded::workflow_pages::files(), "workflow/", texts);
  return texts;
}

// Pieces that stand in a script which another piece has opened.
bool isScriptPiece(const std::string& name) {
  static const std::set<std::string> kPieces = {
      "scheme/module_style.html", "scheme/module_style_case.html", "scheme/session_style.html"};
  return name.ends_with(".js") || kPieces.contains(name);
}

// Each hole's value; those for pieces of a page get none.
std::string filled(const PageText& page, std::string_view value) {
  const frame::PageText text(page.text);
  std::vector<frame::PageText::Hole> holes;
  for (const std::string_view hole : text.holes()) {
    const bool isBuilt =
        page.text.find("{{" + std::string(hole) + ":built") != std::string_view::npos;
    holes.emplace_back(hole, isBuilt ? "" : value);
  }
  const std::string out = text.fill(holes);
  return isScriptPiece(page.name) ? "<script>" + out + "</script>" : out;
}

TEST(HostileValues, StayInTheirPlaceInEveryPageText) {
  const auto texts = pageTexts();
  ASSERT_GT(texts.size(), 80u);
  for (const PageText& page : texts) {
    const auto plain = structureOf(filled(page, "_"));
    for (const std::string_view value :
         {kHostile, std::string_view("&lt;\"&#39;'\\"), std::string_view("</script><!--"),
          std::string_view("\r\n</textarea>-->\u2029")}) {
      const auto hostile = structureOf(filled(page, value));
      EXPECT_EQ(hostile.shape, plain.shape) << page.name << " with " << value;
      EXPECT_FALSE(hostile.names.contains(std::string(kWord))) << page.name;
    }
  }
}

// The test's own eyes: the same values without their escapes are seen.
TEST(HostileValues, AreSeenWhereNothingHoldsThem) {
  const std::string value(kHostile);
  for (const std::string& page :
       {"<p>" + value, "<p title=\"" + value + "\">", "<p title='" + value + "'>",
        "<p title=" + value + ">", "<textarea>" + value, "<title>" + value, "<!-- " + value,
        "<script>var a='" + value + "';</script>", "<script>var a=\"" + value + "\";</script>",
        "<script>var a=" + value + ";</script>", "<script>/* */ // " + value,
        "<p onclick=\"f('" + tarlo::text::replace(value, "\"", "&quot;") + "')\">",
        "<script>x.innerHTML='" + tarlo::frame::inPlace(frame::Place::Script, value) +
            "';</script>"}) {
    EXPECT_TRUE(acts(page)) << page;
  }
}

// ---- operations

class HostileDatabase {
 public:
  explicit HostileDatabase(const std::string& connection) : connection_(connection) {}

  // The answer of an operation with its example's arguments, the page and what it gives.
  std::string answer(const component::Operation& operation, const frame::ValueMap& request);
  void execute(const std::string& sql) {
    frame::LocalPage local(databases_, connection_);
    frame::execSQL(local.page(), sql);
  }
  // Puts the hostile value in front of the column's values, or a short one in place of them.
  void fill(const std::string& table, const std::string& column) {
    const std::string set = "update " + table + " set " + column + "=N'";
    try {
      execute(set + text::doubledQuotes(kHostile) + "'+ISNULL(" + column + ",'')");
    } catch (const RuntimeError&) {
      execute(set + text::doubledQuotes(kShort) + "'");
    }
  }
  template <class Write>
  std::string written(Write write) {
    frame::LocalPage local(databases_, connection_);
    prepare(local);
    write(local.page());
    return local.written();
  }

 private:
  static void prepare(frame::LocalPage& local) {
    for (const siblings::ProgId& progId : siblings::progIds())
      local.registerObject(std::string(progId.name), progId.make);
    local.session()["usrID"] = 3;
    local.session()["usrICID"] = 127;
  }

  std::string connection_;
  database::Registry databases_;
};

// The words of an example: arguments, and request values.
struct Example {
  std::vector<Variant> arguments;
  frame::ValueMap request;
};

Example exampleFor(std::string_view operation) {
  Example example;
  const auto words = tarlo::testing::shellWords(exampleOf(operation)->words);
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!words[i].starts_with("--")) {
      example.arguments.push_back(words[i] == "json:false" ? Variant(false) : Variant(words[i]));
      continue;
    }
    const std::size_t equals = words[++i].find('=');
    if (words[i - 1] == "--request") {
      example.request[words[i].substr(0, equals)] = words[i].substr(equals + 1);
    }
  }
  return example;
}

// Operations that hand a piece of a page to their caller.
bool givesMarkup(std::string_view name) {
  return name.starts_with("showSearchDlg_") || name == "getSaveName" || name == "getActionHelp";
}

std::string HostileDatabase::answer(const component::Operation& operation,
                                    const frame::ValueMap& request) {
  frame::LocalPage local(databases_, connection_);
  prepare(local);
  Example example = exampleFor(operation.name);
  for (const auto& values : {example.request, request}) {
    for (const auto& [key, value] : values) local.request()[key] = value;
  }
  std::string result;
  try {
    component::TarloQuery component;
    component.onStartPage(local.page());
    const Variant value = component.call(operation.name, example.arguments);
    if (givesMarkup(operation.name)) result = variant::spliced(value);
  } catch (const RuntimeError&) {  // what stands in the page up to there counts
  } catch (const frame::PageEnd&) {
  }
  return local.written() + result;
}

bool writes(const component::Operation& operation) {
  const bool isPage = operation.kind == component::OperationKind::Page;
  return (isPage && operation.name != "TransferFile") || givesMarkup(operation.name) ||
         exampleOf(operation.name)->result.find("writes") != std::string_view::npos;
}

class HostileValuesTest : public CliTest {
 protected:
  HostileDatabase demo() {
    const std::string database = connection("demo.db");
    EXPECT_EQ(cli({"init", "--demo", "--database", database}).exitCode, 0);
    return HostileDatabase(database);
  }
};

const std::vector<frame::ValueMap>& openedSchemes() {
  static const std::vector<frame::ValueMap> kMaps = {
      {},
      {{"type", "1"}, {"prikeyid", "1"}, {"sTable", "11"}},
      {{"type", "1"}, {"prikeyid", "5"}, {"sTable", "53"}, {"gostep", "6"}},
      {{"fieldtype", "1"},
       {"id", "1"},
       {"realField", "[UserTb_Customer].[Zembra_ID]"},
       {"viewField", "[UserTb_Customer].[Name]"}},
      {{"fieldtype", "3"}, {"id", "1"}, {"viewfield", "1,2"}, {"queryid", "1"}}};
  return kMaps;
}

// Every text that a page shows, in one column after the other.
const std::pair<const char*, std::vector<const char*>> kShownColumns[] = {
    {"Zembra_Menu", {"Menu_Name", "Menu_Desc"}},
    {"Zembra_User", {"User_Name", "User_user"}},
    {"Zembra_Group", {"Group_name"}},
    {"Zembra_Rank", {"Rank_name"}},
    {"Zembra_Quarters", {"Quarters_name"}},
    {"Zembra_ICON", {"icon_name", "icon_file"}},
    {"Zembra_SubHelp", {"SubHelp_title", "SubHelp_popup"}},
    {"Zembra_Dict_TableDir", {"TD_Name"}},
    {"Zembra_DataDict_Table", {"DDT_CName"}},
    {"Zembra_DataDict_Field", {"DDF_CName"}},
    {"Zembra_DataDict_Relation", {"DDR_MainTableName", "DDR_RelationFieldName"}},
    {"Zembra_Query_Main",
     {"Query_Name", "Query_Desc", "Query_Vir", "Query_Rel", "Query_Static", "Query_Group",
      "Query_MultiRelSel"}},
    {"Zembra_Query_Field", {"QF_Name", "QF_Desc"}},
    {"UserTb_Customer", {"Name"}}};

TEST_F(HostileValuesTest, OfRowsStayInTheirPlaceInEveryOperation) {
  HostileDatabase data = demo();
  for (const auto& [table, columns] : kShownColumns) {
    for (const char* column : columns) data.fill(table, column);
  }
  std::size_t asked = 0, holding = 0;
  for (const auto& operation : component::operations()) {
    if (!writes(operation)) continue;
    for (const frame::ValueMap& request : openedSchemes()) {
      const std::string page = data.answer(operation, request);
      EXPECT_FALSE(acts(page)) << operation.name << ": " << page;
      ++asked;
      if (page.find(kWord) != std::string::npos) ++holding;
    }
  }
  EXPECT_GT(asked, 200u);
  EXPECT_GT(holding, 60u);  // the values did reach the pages
  for (const auto write :
       {host::writeShell, host::writePane, host::writeStart, host::writeDemoForm}) {
    const std::string page = data.written(write);
    EXPECT_FALSE(acts(page)) << page;
    EXPECT_TRUE(holds(page, kWord));
  }
}

// Every key that an operation reads, one at a time.
constexpr const char* kKeys[] = {
    "action",    "contrltype", "cfield",    "field",     "field1",    "fields",     "fieldtype",
    "filter",    "gostep",     "id",        "modelid",   "mul",       "multi",      "Mulrelation",
    "prikeyid",  "QF_Desc",    "QF_Name",   "queryid",   "realField", "rel",        "relfield",
    "relField1", "relField2",  "relField3", "sql",       "sTable",    "step0Multi", "step1Virtual",
    "step2Rel",  "step3Stats", "step4Memo", "step4Name", "TableName", "TitleField", "type",
    "viewField", "viewfields", "virtual"};

TEST_F(HostileValuesTest, OfRequestsStayInTheirPlaceInEveryPage) {
  HostileDatabase data = demo();
  std::size_t holding = 0;
  for (const auto& operation : component::operations()) {
    if (operation.kind != component::OperationKind::Page) continue;
    const frame::ValueMap example = exampleFor(operation.name).request;
    for (const char* key : kKeys) {
      const auto given = example.find(key);
      const std::string before = given == example.end() ? "" : variant::spliced(given->second);
      for (const char* type : {"", "1"}) {
        const std::string page = data.answer(
            operation, {{"type", type}, {"prikeyid", type}, {key, before + std::string(kHostile)}});
        EXPECT_FALSE(acts(page)) << operation.name << " with " << key << ": " << page;
        if (page.find(kWord) != std::string::npos) ++holding;
      }
    }
  }
  EXPECT_GT(holding, 20u);
}

}  // namespace
}  // namespace tarlo::app
