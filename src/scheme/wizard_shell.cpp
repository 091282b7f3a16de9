#include <array>

#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "metadata/stored_schemes.h"
#include "scheme/dialog.h"
#include "scheme/extras.h"
#include "scheme/operations.h"
#include "scheme/step_fields.h"
#include "services/cascade_levels.h"
#include "services/data_sources.h"
#include "services/operations.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::inPlace;
using frame::PageText;
using frame::Place;
using variant::spliced;

// Tables in development are offered too, as this system has always been shipped.
constexpr bool kDebug = true;
constexpr std::string_view kTableFilter =
    kDebug ? "Zembra_Flag <> 0" : "Zembra_Flag <> 0 and DDT_Status <> 2 and DDT_Status <> 4";

// The level of tables below the directories, as the page has it.
const std::string kTables = "Zembra_DataDict_Table,DDT_DirID,Zembra_ID,DDT_CName,";

constexpr std::string_view kDirectories =
    "select Zembra_ID,TD_Name from Zembra_Dict_TableDir where Zembra_Flag<>0";

struct Step {
  std::string_view title;
  std::string_view content;  // "" for the first, whose content is made for each page
  std::string_view next;
  std::string_view back;  // "" for the dialog's own
};
constexpr std::array<Step, 7> kSteps = {{
    {"选择数据库目录和数据库", "", "nextStep1()", ""},
    {"双击选择数据库关联信息",
     "<iframe name='s1iframe' src='about:blank' width='580' height='290' "
     "frameborder=0px></iframe>",
     "nextStep2()", ""},
    {"设置计算字段",
     "<iframe name='s2iframe' src='about:blank' width='580' height='290' frameborder=0px "
     "scroll=no></iframe>",
     "nextStep3();", ""},
    {"设置过滤条件",
     "<iframe name='s3iframe' src='about:blank' width='580' height='290' frameborder=0px "
     "scroll=no></iframe>",
     "nextStep4()", "goBack3()"},
    {"设置统计函数",
     "<iframe name='s4iframe' src='about:blank' width='580' height='290' "
     "frameborder=0px></iframe>",
     "nextStep5()", "goBack4()"},
    {"预览查询方案",
     "<iframe name='s5iframe' src='about:blank' width='580' height='290' "
     "frameborder=0px></iframe>",
     "nextStep6()", "goBack5()"},
    {"设置保存",
     "<iframe name='s6iframe' src='about:blank' width='580' height='290' "
     "frameborder=0px></iframe>",
     "SaveQuery()", ""},
}};

// What a scheme that is changed brings to the first step; empty for a new one.
struct Preset {
  bool isChange = false;
  std::string id;
  std::string mainTable;
  std::string directory;
  bool isMultiLevel = false;
};

// A multi-level flag that is Null counts as set, since it is not "0".
void readMultiLevel(Page& page, Preset& preset) {
  const frame::Rows rows = frame::rows(
      page,
      "select Query_Vir,Query_Rel,Query_Static,Query_Group,Query_MultiRel from Zembra_Query_Main "
      "where Query_ID=" +
          preset.id);
  if (!rows.empty()) preset.isMultiLevel = text::trim(rows.front().text(4)) != "0";
}

Preset readPreset(Page& page) {
  Preset preset;
  ErrorState err;
  err.run([&] { preset.isChange = isChange(page); });
  if (!preset.isChange) return preset;
  err.run([&] { preset.id = spliced(page.request.value("prikeyid")); });
  preset.mainTable = metadata::keyTable(page, preset.id).value_or("-1");
  err.run([&] {
    preset.directory = frame::firstText(
        page, "select DDT_DirID from Zembra_DataDict_Table where Zembra_ID=" + preset.mainTable);
  });
  err.run([&] { readMultiLevel(page, preset); });
  return preset;
}

std::string firstStep(Page& page, const Preset& preset) {
  static const PageText content(embedded::scheme_pages::find("wizard_first_step.html"));
  const std::string directories = services::comboBoxOptions(page, std::string(kDirectories));
  const std::string scheme = preset.isChange ? "<input type = hidden name = type value = \"1\">\r\n"
                                               "<input type = hidden name = prikeyid value = \"" +
                                                   inPlace(Place::Encoded, preset.id) + "\">\r\n"
                                             : "";
  const std::string presets =
      preset.isChange ? " beginvalue=\"" + inPlace(Place::Attribute, preset.mainTable) +
                            "\" selectvalue=\"" + inPlace(Place::Attribute, preset.directory) + "\""
                      : "";
  services::offerCascade(page, kTables + std::string(kTableFilter),
                         {.reads = {database::TableGroup::Dictionary}, .writes = {}});
  constexpr std::string_view kChecked = " checked";
  return content.fill({{"scheme", scheme},
                       {"presets", presets},
                       {"filter", kTableFilter},
                       {"directories", directories},
                       {"single", preset.isMultiLevel ? "" : kChecked},
                       {"multi", preset.isMultiLevel ? kChecked : ""}});
}

std::string shellScript(Page& page, const Preset& preset) {
  static const PageText script(embedded::scheme_pages::find("wizard_shell.js"));
  const std::string mode =
      preset.isChange ? "&type=1&prikeyid=" + inPlace(Place::Address, preset.id) : "";
  return "<script>\r\n" + script.fill({{"mode", mode}}) + "</script>\r\n" +
         wizardExtras(page, preset.id);
}

void setUp(Page& page, Dialog& dialog, const Preset& preset) {
  dialog.put("title", "查询方案自定义");
  dialog.put("TotalStep", static_cast<int>(kSteps.size()));
  dialog.putMade("addjs", [&] { return shellScript(page, preset); });
  dialog.put("FormAction", "TarloQuery.Zembra");
  const std::string_view action = preset.isChange ? "modiSearchDlg" : "addSearchDlg";
  dialog.putMade("HelpHtml", [&] { return services::getActionHelp(page, action); });
  dialog.putMade("HelpTitle", [&] { return services::getActionHelpTitle(page, action); });
  dialog.put("addHTML", "<iframe name='s0iframe' src='about:blank' style='border: 0px'></iframe>");
}

}  // namespace

void addSearchDlg(Page& page) {
  const Preset preset = readPreset(page);
  Dialog dialog(page, "TarloDialog.WebDialog", frame::kSessionAndResponse);
  setUp(page, dialog, preset);
  ErrorState err;
  for (const Step& step : kSteps) {
    const std::string content = step.content.empty()
                                    ? err.value([&] { return firstStep(page, preset); })
                                    : std::string(step.content);
    dialog.call("addStep", {step.title, content, step.next, step.back});
  }
  dialog.call("writeDialog");
}

void modisearchdlg(Page& page) {
  addSearchDlg(page);
}

}  // namespace tarlo::scheme
