#include "scheme/scheme_detail.h"

#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/sibling_calls.h"
#include "frame/template.h"
#include "metadata/operations.h"
#include "scheme/title_table.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::callMethod;
using frame::Template;
using variant::spliced;

std::vector<std::string> titlesOf(Page& page, const std::string& id) {
  ErrorState err;
  const Variant titles =
      err.value([&] { return metadata::getQueryAllTitle(page, Variant(id), false); });
  std::vector<std::string> names;
  if (!titles.isArray()) return names;
  const Array& array = titles.array();
  for (std::ptrdiff_t i = 1; i <= array.upperBound(); ++i) names.push_back(spliced(array.at(i)));
  return names;
}

}  // namespace

void showSearchDlg(Page& page) {
  static const Template body(embedded::scheme_pages::find("scheme_detail.html"));
  const std::string id = spliced(page.request.value("id"));
  const auto dialog = page.server.createObject("TarloDialog.SingleDialog");
  frame::connectToPage(page, *dialog, frame::kResponseAndSession);
  dialog->put("title", "查询方案预览");
  dialog->put("bodyHtml", body.fill({{"rows", titleRows(titlesOf(page, id))}}));
  dialog->put("bgcolor", "menu");
  callMethod(*dialog, "writeDialog");
}

void delSearch(Page& page) {
  const std::string ids = spliced(page.request.value("ID"));
  ErrorState err;
  for (const std::string_view target : {"Zembra_Query_Main set Zembra_Flag = 0 where Query_ID",
                                        "Zembra_Query_Field set Zembra_Flag = 0 where QF_NameID"}) {
    std::string sql("update " + std::string(target) + " in (" + ids + ")");
    err.run([&] { frame::execSQLLogged(page, sql); });
  }
  page.response.write("<script>top.sAlert('选中查询方案已经从系统中删除！',false);</script>");
}

void querycheckselect(Page& page) {
  ErrorState err;
  const Variant rows = err.value([&] {
    return frame::execSQLRows(
        page,
        "SELECT DISTINCT b.Zembra_ID FROM Zembra_DataDict_Field as a INNER JOIN "
        "Zembra_DataDict_Table as b ON a.DDF_TableID  =  b.Zembra_ID where a.Zembra_ID in (" +
            spliced(page.request.value("field")) + ")");
  });
  if (!rows.isArray()) return;
  const Array& cells = rows.array();
  std::string tables;
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    tables += (row == 0 ? "" : ",") + spliced(cells.at(0, row));
  }
  page.response.clear();
  page.response.write(tables);
  page.response.end();
}

}  // namespace tarlo::scheme
