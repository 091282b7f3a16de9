#include <fmt/format.h>

#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "frame/sibling_calls.h"
#include "scheme/operations.h"
#include "scheme/step_fields.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::callMethod;
using frame::PageText;
using variant::spliced;

constexpr std::string_view kRelations =
    "select Zembra_ID,DDR_MainTableName,DDR_MainFieldName,DDR_RelationTableName,"
    "DDR_RelationFieldName from Zembra_DataDict_Relation";

// The first column of all rows, each behind the other with "," behind it; a failed statement gives
// nothing.
std::string ids(Page& page, const std::string& sql) {
  ErrorState err;
  const frame::Rows rows = err.value([&] { return frame::rows(page, sql); });
  std::string list;
  for (frame::Row row : rows) list += row.text(0) + ",";
  return list;
}

void cutComma(std::string& list) {
  if (list.ends_with(',')) list.pop_back();
}

// A column of the relations that lead to the table, and one of those that start from it.
std::string touching(std::string_view leadingTo, std::string_view startingFrom,
                     std::string_view table) {
  return fmt::format(
      "select {} from Zembra_DataDict_Relation where DDR_RelationTableID={}"
      " union select {} from Zembra_DataDict_Relation where DDR_MainTableID={}",
      leadingTo, table, startingFrom, table);
}

// Relations of every table that the main table touches. One between two of these comes twice.
std::string neighbourRelations(Page& page, const std::string& mainTable) {
  const std::string neighbours =
      ids(page, touching("DDR_MainTableID", "DDR_RelationTableID", mainTable));
  std::string list;
  for (const std::string_view piece : text::split(neighbours, ",")) {
    if (!piece.empty()) list += ids(page, touching("Zembra_ID", "Zembra_ID", piece));
  }
  cutComma(list);
  return list.empty() ? "-1" : list;  // no relation has it: the statement selects nothing
}

std::string offered(Page& page) {
  const std::string mainTable = spliced(page.request.value("sTable"));
  if (variant::equalsAsText(page.request.value("mul"), "1")) {
    return std::string(kRelations) + " where Zembra_ID in (" + neighbourRelations(page, mainTable) +
           ")";
  }
  return std::string(kRelations) + " where DDR_MainTableID=" + mainTable +
         " or DDR_RelationTableID=" + mainTable;
}

// What the page begins with.
struct Selection {
  std::string relations;  // ids, joined by ","
  std::string rows;       // their rows in the list
  std::string steps;      // the optional steps in use, joined by ","
};

std::string optionalSteps(std::string_view computed, std::string_view filter,
                          std::string_view statistics) {
  std::string steps;
  if (!text::trim(computed).empty()) steps += "1,";
  if (!text::trim(filter).empty()) steps += "2,";
  if (!text::trim(statistics).empty()) steps += "5";
  cutComma(steps);
  return steps;
}

// The selection is made anew from the relations that are there: one that has left the dictionary
// leaves the scheme.
void selectRelations(Page& page, const std::string& stored, Selection& selection) {
  static const PageText line(embedded::scheme_pages::find("relation_step_row.html"));
  for (frame::Row row : frame::rows(page, std::string(kRelations) + " where Zembra_ID in (" +
                                              (stored.empty() ? "0" : stored) + ")")) {
    selection.relations += row.text(0) + ",";
    selection.rows += line.fill({{"id", row.text(0)},
                                 {"mainTable", row.text(1)},
                                 {"mainField", row.text(2)},
                                 {"relatedTable", row.text(3)},
                                 {"relatedField", row.text(4)}});
  }
  cutComma(selection.relations);
}

Selection readSelection(Page& page) {
  Selection selection;
  if (!isChange(page)) return selection;
  ErrorState err;
  std::string stored;
  err.run([&] {
    const frame::Rows rows = frame::rows(
        page,
        "select Query_MultiRelSel,Query_Vir,Query_Rel,Query_Static from Zembra_Query_Main where "
        "Query_ID=" +
            spliced(page.request.value("prikeyid")));
    if (rows.empty()) return;
    const frame::Row row = rows.front();
    stored = text::trim(row.text(0));
    selection.steps = optionalSteps(row.text(1), row.text(2), row.text(3));
  });
  err.run([&] { selectRelations(page, stored, selection); });
  return selection;
}

void writeGrid(Page& page) {
  const auto grid = page.server.createObject("TarloTable.table");
  frame::connectToPage(page, *grid, frame::kGridContext);
  grid->put("id", "SearchTable");
  grid->put("SelectionStyle", 2);
  grid->put("title", "主表|主表关联字段|关联表|关联表关联字段");
  grid->put("sql", offered(page));
  grid->put("Pagesize", 7);
  grid->put("showMenu", false);
  grid->put("showButton", false);
  grid->put("onRowDoubleClick", "getRel()");
  grid->put("orderBy", "Zembra_ModiDate DESC");
  grid->put("MultiPage", "false");
  grid->put("Width", "100%");
  callMethod(*grid, "WriteTable");
}

}  // namespace

void addSearchDlg1(Page& page) {
  static const PageText rest(embedded::scheme_pages::find("relation_step.html"));
  const Selection selection = readSelection(page);
  frame::writeStepHead(page);
  writeGrid(page);
  rest.write(
      page.response,
      {{"rows", selection.rows}, {"steps", selection.steps}, {"relations", selection.relations}});
}

}  // namespace tarlo::scheme
