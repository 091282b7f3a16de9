#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "metadata/stored_schemes.h"
#include "scheme/operations.h"
#include "services/data_sources.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::PageText;
using variant::spliced;

constexpr std::string_view kDirectories =
    "select Zembra_ID,TD_Name from Zembra_Dict_TableDir where Zembra_Flag <> 0 order by "
    "Zembra_WriteDate DESC";

struct Stored {
  std::string name;
  std::string description;
  std::string kind;  // "1" for a system scheme
  std::string directory;
};

Stored readStored(Page& page, const std::string& id) {
  if (id.empty()) return {};
  ErrorState err;
  const frame::Rows rows = err.value([&] {
    return frame::rows(
        page,
        "select Query_Name , Query_Desc , Query_System , Query_Dic from Zembra_Query_Main where "
        "Query_ID=" +
            id);
  });
  if (rows.empty()) return {};
  const frame::Row row = rows.front();
  return {row.text(0), row.text(1), row.text(2), row.text(3)};
}

// The two forms differ in `col` too.
std::string_view kindTag(const std::string& kind) {
  return kind == "1"
             ? R"(<Tarlo:Groupradio id="Querysys" name="System" col="2" text="用户,系统" values="0,1" defaultvalue="1" />)"
             : R"(<Tarlo:Groupradio id="Querysys" name="System" text="用户,系统" values="0,1" defaultvalue="0"/>)";
}

}  // namespace

void addSearchDlg6(Page& page) {
  static const PageText form(embedded::scheme_pages::find("save_form.html"));
  const std::string id = spliced(page.request.value("prikeyid"));
  const Stored stored = readStored(page, id);
  const std::string step = spliced(page.request.value("gostep"));
  const std::string table = metadata::keyTable(page, id).value_or("-1");
  frame::writeStepHead(page);
  form.write(page.response,
             {{"name", stored.name},
              {"kind", kindTag(stored.kind)},
              {"directory", stored.directory},
              {"directories", services::comboBoxOptions(page, std::string(kDirectories))},
              {"description", stored.description},
              {"step", step},
              {"table", table}});
}

}  // namespace tarlo::scheme
