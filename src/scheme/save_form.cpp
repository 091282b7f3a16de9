#include "scheme/save_form.h"

#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/template.h"
#include "metadata/operations.h"
#include "services/data_sources.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::Template;
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

Stored readStored(Page& page) {
  const std::string id = spliced(page.request.value("prikeyid"));
  if (id.empty()) return {};
  ErrorState err;
  const Variant rows = err.value([&] {
    return frame::execSQLRows(
        page,
        "select Query_Name , Query_Desc , Query_System , Query_Dic from Zembra_Query_Main where "
        "Query_ID=" +
            id);
  });
  if (!rows.isArray()) return {};
  const auto cell = [&](std::ptrdiff_t column) { return spliced(rows.array().at(column, 0)); };
  return {cell(0), cell(1), cell(2), cell(3)};
}

// The two forms differ in `col` too.
std::string_view kindTag(const std::string& kind) {
  return kind == "1"
             ? R"(<Tarlo:Groupradio id="Querysys" name="System" col="2" text="用户,系统" values="0,1" defaultvalue="1" />)"
             : R"(<Tarlo:Groupradio id="Querysys" name="System" text="用户,系统" values="0,1" defaultvalue="0"/>)";
}

}  // namespace

void addSearchDlg6(Page& page) {
  static const Template form(embedded::scheme_pages::find("save_form.html"));
  const Stored stored = readStored(page);
  const std::string step = spliced(page.request.value("gostep"));
  ErrorState err;
  std::string table;
  err.run([&] {
    table = spliced(metadata::KeyField2TableID(page, page.request.value("prikeyid"), false));
  });
  frame::writeStepHead(page);
  form.write(page.response,
             {{"name", stored.name},
              {"kind", kindTag(stored.kind)},
              {"directory", stored.directory},
              {"directories", spliced(services::GetComboBoxXMLs(page, kDirectories))},
              {"description", stored.description},
              {"step", step},
              {"table", table}});
}

}  // namespace tarlo::scheme
