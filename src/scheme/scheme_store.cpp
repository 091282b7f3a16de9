#include "scheme/scheme_store.h"

#include "frame/data.h"
#include "variant/convert.h"

namespace tarlo::scheme {

std::optional<Scheme> loadScheme(Page& page, int id) {
  const frame::Rows rows =
      frame::rows(page,
                  "select Query_ID,Query_Name,Query_Desc,Query_MainTBID,Query_Vir,Query_Rel,"
                  "Query_Static,Query_Group,Query_MultiRelSel,Query_Fields,Zembra_Flag"
                  " from Zembra_Query_Main where Query_ID=" +
                      std::to_string(id));
  if (rows.empty()) return std::nullopt;
  const frame::Row row = rows.front();
  return Scheme{variant::toInt32(row.value(0)),
                row.text(1),
                row.text(2),
                {row.text(3), row.text(4), row.text(5), row.text(6), row.text(7), row.text(8)},
                row.text(9),
                row.text(10) == "0"};
}

std::vector<SchemeTitle> listSchemes(Page& page) {
  std::vector<SchemeTitle> titles;
  for (frame::Row row : frame::rows(page,
                                    "select Query_ID,Query_Name from Zembra_Query_Main"
                                    " where Zembra_Flag <> 0 order by Query_ID")) {
    titles.push_back({variant::toInt32(row.value(0)), row.text(1)});
  }
  return titles;
}

}  // namespace tarlo::scheme
