#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "metadata/dictionary.h"
#include "scheme/operations.h"
#include "scheme/step_fields.h"
#include "services/data_sources.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using frame::PageText;
using variant::spliced;

// Fields of every kind, key fields included. "*" tells those of a related table.
std::string fieldStatement(Page& page, const std::string& mainTable, const std::string& relations) {
  const auto select = [](std::string_view mark, const std::string& id) {
    return "select b.Zembra_ID," + std::string(mark) +
           "a.DDT_CName+'.'+b.DDF_CName from Zembra_DataDict_Table as a,Zembra_DataDict_Field as b "
           "where b.DDF_TableID = " +
           id + " and b.Zembra_Flag <> 0 and a.Zembra_ID=b.DDF_TableID union ";
  };
  std::string statement;
  for (const metadata::Path& path : metadata::paths(page, mainTable, relations)) {
    statement += select("'*'+", path.table);
  }
  return statement + select("", mainTable) + "select -1,'--选择字段--'";
}

// The list as it is shown, and as the script keeps it: every item with ";" behind it.
struct Restored {
  std::string rows;
  std::string list;
};

// What the page posts is the inside of the rows' elements, so references in a stored text stay.
void add(Restored& restored, std::string_view text) {
  restored.rows += frame::inPlace(frame::Place::Kept, text);
  restored.list += text;
}

// A reference becomes [table.field|id] again. One whose field is gone vanishes, with the text that
// follows it up to the next one.
void restorePiece(Page& page, std::string_view piece, Restored& restored) {
  const auto parts = text::split(piece, "]");
  if (parts.size() < 2) return add(restored, piece);
  const auto field = metadata::fieldNames(page, parts[0]);
  if (!field) return;
  add(restored,
      text::joined({"[", field->tableDisplay, ".", field->display, "|", parts[0], "]", parts[1]}));
}

void restoreItem(Page& page, std::string_view item, Restored& restored) {
  static const PageText open(embedded::scheme_pages::find("computed_step_row.html"));
  std::string row = open.fill();
  while (row.ends_with('\n') || row.ends_with('\r')) row.pop_back();
  restored.rows += row;
  const std::size_t colon = item.find(':');
  const std::size_t name = colon == std::string_view::npos ? 0 : colon + 1;
  add(restored, item.substr(0, name));
  for (const std::string_view piece : text::split(item.substr(name), "[")) {
    if (!piece.empty()) restorePiece(page, piece, restored);
  }
  restored.rows += "</tr></td>";
  restored.list += ";";
}

Restored restore(Page& page) {
  Restored restored;
  if (!isChange(page)) return restored;
  const std::string stored =
      frame::firstText(page, "select Query_Vir from Zembra_Query_Main where Query_ID=" +
                                 spliced(page.request.value("prikeyid")));
  for (const std::string_view item : text::split(text::trim(stored), ";")) {
    restoreItem(page, item, restored);
  }
  return restored;
}

}  // namespace

void addSearchDlg2(Page& page) {
  static const PageText rest(embedded::scheme_pages::find("computed_step.html"));
  const std::string mainTable = spliced(page.request.value("sTable"));
  const std::string statement =
      fieldStatement(page, mainTable, spliced(page.request.value("multi")));
  const std::string fields = services::comboBoxOptions(page, statement);
  const Restored restored = restore(page);
  frame::writeStepHead(page);
  rest.write(page.response, {{"fields", fields},
                             {"rows", restored.rows},
                             {"list", restored.list},
                             {"step", spliced(page.request.value("gostep"))},
                             {"table", mainTable}});
}

}  // namespace tarlo::scheme
