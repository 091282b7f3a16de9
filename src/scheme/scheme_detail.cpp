#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "metadata/stored_schemes.h"
#include "scheme/dialog.h"
#include "scheme/operations.h"
#include "scheme/titles.h"
#include "variant/convert.h"

namespace tarlo::scheme {

using frame::PageText;
using variant::spliced;

void showSearchDlg(Page& page) {
  static const PageText body(embedded::scheme_pages::find("scheme_detail.html"));
  ErrorState err;
  const std::string id = err.value([&] { return spliced(page.request.value("id")); });
  // The name is asked for and not shown.
  err.run(
      [&] { frame::rows(page, "select Query_Name from Zembra_Query_Main where Query_ID=" + id); });
  const auto titles = err.value([&] { return metadata::columnTitles(page, id); });
  Dialog dialog(page, "TarloDialog.SingleDialog", frame::kResponseAndSession);
  dialog.put("title", "查询方案预览");
  dialog.put("bodyHtml",
             body.fill({{"rows", titleRows(titles.value_or(std::vector<std::string>()))}}));
  dialog.put("bgcolor", "menu");
  dialog.call("writeDialog");
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
  const frame::Rows rows = err.value([&] {
    return frame::rows(
        page,
        "SELECT DISTINCT b.Zembra_ID FROM Zembra_DataDict_Field as a INNER JOIN "
        "Zembra_DataDict_Table as b ON a.DDF_TableID  =  b.Zembra_ID where a.Zembra_ID in (" +
            spliced(page.request.value("field")) + ")");
  });
  if (rows.empty()) return;
  std::string tables;
  for (frame::Row row : rows) tables += row.text(0) + ",";
  tables.pop_back();
  page.response.clear();
  page.response.write(tables);
  page.response.end();
}

}  // namespace tarlo::scheme
