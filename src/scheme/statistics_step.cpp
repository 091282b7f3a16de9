#include <array>
#include <cmath>

#include "compile/grammar.h"
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
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::inPlace;
using frame::PageText;
using frame::Place;
using variant::spliced;

constexpr std::string_view kOrdinaryKinds = "(NOT (DDF_Type IN (1 , 10 , 11 , 12 , 13 , 14)))";
constexpr std::array<std::string_view, 6> kFunctions = {"最大值", "最小值", "平均值",
                                                        "总和",   "记录数", "本身"};

// A related table that is reached twice comes twice and is not told apart: the union leaves one.
// A computed field's name goes in as it stands; one with a quote leaves the list empty.
std::string fieldStatement(Page& page, const std::string& mainTable,
                           const std::vector<std::string>& computed) {
  std::string statement;
  for (const metadata::Path& path :
       metadata::paths(page, mainTable, spliced(page.request.value("multi")))) {
    statement += "select Zembra_ID,'*'+DDF_CName from Zembra_DataDict_Field where DDF_TableID = " +
                 path.table + " and Zembra_Flag <> 0 and " + std::string(kOrdinaryKinds) +
                 " union ";
  }
  statement += "select Zembra_ID,DDF_CName from Zembra_DataDict_Field where DDF_TableID in (" +
               mainTable + ") and " + std::string(kOrdinaryKinds) + " and Zembra_Flag <> 0";
  for (std::size_t k = 0; k < computed.size(); ++k) {
    statement += " union select -" + std::to_string(k + 1) + ",'" + computed[k] + "'";
  }
  return statement;
}

// What a stored scheme brings.
struct StoredStatistics {
  std::string grouping;
  std::string statistics;
  std::string computed;
};

StoredStatistics readStored(Page& page) {
  ErrorState err;
  const frame::Rows rows = err.value([&] {
    return frame::rows(page,
                       "select Query_Group,Query_Static,Query_Vir from Zembra_Query_Main "
                       "where  Zembra_Flag <> 0 and query_ID=" +
                           spliced(page.request.value("prikeyid")));
  });
  if (rows.empty()) return {};
  const auto trimmed = [row = rows.front()](std::size_t column) {
    return std::string(text::trim(row.text(column)));
  };
  return {trimmed(0), trimmed(1), trimmed(2)};
}

std::string asText(std::string_view name) {
  return inPlace(Place::Text, name);
}

// "1.table.field_", as markup, of a stored item; "" when its field or computed field is not there
// any more.
std::string itemName(Page& page, std::size_t index, std::string_view token,
                     std::string_view computed) {
  ErrorState err;
  double number = 0;
  err.run([&] { number = variant::toDouble(Variant(token)); });
  const std::string position = std::to_string(index + 1) + ".";
  if (number < 0) {
    const auto names = computedNames(computed);
    const auto n = static_cast<std::size_t>(std::abs(number));
    return n == 0 || n > names.size() ? "" : position + asText(names[n - 1]) + "_";
  }
  const auto field = metadata::fieldNames(page, token);
  if (!field) return "";
  return position + asText(field->tableDisplay) + "." + asText(field->display) + "_";
}

std::string functionLine(std::string_view code) {
  for (std::size_t i = 0; i < kFunctions.size(); ++i) {
    if (code == std::to_string(i + 1)) return std::string(kFunctions[i]) + "<br>";
  }
  return "";
}

// The page's strings hold a backslash in front of each apostrophe.
std::string escaped(const std::string& text) {
  return inPlace(Place::ScriptSingle, text::replace(text, "'", "\\'"));
}

std::string statisticsScript(Page& page, const StoredStatistics& stored) {
  if (stored.statistics.empty()) return "";
  const auto items = compile::statisticsOf(stored.statistics);
  std::string lines;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const compile::Pieces& parts = items[i].parts();
    const std::string_view token = parts.empty() ? std::string_view() : parts[0];
    lines += itemName(page, i, token, stored.computed);
    if (parts.size() > 1) lines += functionLine(parts[1]);
  }
  return "StatsRecord='" + escaped(stored.statistics) + "|||';\r\nViewRecord='" + escaped(lines) +
         "';\r\ndocument.all(\"Result\").insertAdjacentHTML('BeforeEnd', ViewRecord );\r\ncount "
         "= " +
         std::to_string(items.size() + 1) + ";\r\n";
}

// The whole grouping stands behind each equals sign. With several fields the browser reads a comma
// expression: the first is assigned, the rest has no effect, and the lines below add it.
std::string groupingScript(std::string grouping) {
  if (grouping.ends_with(',')) grouping.pop_back();
  if (grouping.empty()) return "";
  const std::string all = inPlace(Place::Numbers, grouping);
  std::string script = "    document.all(\"groupby\").selectvalue=" + all +
                       ";\r\n    document.all(\"groupby\").value=" + all + ";\r\n";
  const auto fields = text::split(grouping, ",");
  for (std::size_t i = 1; i < fields.size(); ++i) {
    script += "    appgroup();\r\n    document.all(\"groupby\")[" + std::to_string(i) +
              "].selectvalue=" + inPlace(Place::Number, fields[i]) + ";\r\n";
  }
  return script;
}

// The script puts the caption of a chosen field into the list as markup. A list that has a caption
// with references in it gets the longer script.
std::string_view shownCaption(std::string_view fields) {
  const bool isPlain = fields.find('&') == std::string_view::npos;
  return isPlain ? "" : ".replace(/&/g,'&amp;').replace(/</g,'&lt;')";
}

std::string withoutLineEnds(const std::string& text) {
  return text::replace(text, "\r\n", "");
}

}  // namespace

void addSearchDlg4(Page& page) {
  static const PageText controls(embedded::scheme_pages::find("statistics_step.html"));
  static const PageText script(embedded::scheme_pages::find("statistics_step.js"));
  const std::string mainTable(text::trim(spliced(page.request.value("sTable"))));
  std::string posted = spliced(page.request.value("virtual"));
  const std::string step = spliced(page.request.value("gostep"));
  if (step == "6") posted = unescaped(posted);
  const std::string statement = fieldStatement(page, mainTable, computedNames(posted));
  const std::string groups =
      services::comboBoxOptions(page, statement + " union select -1000,'--不分组--'");
  const std::string fields = services::comboBoxOptions(page, statement);
  const StoredStatistics stored = isChange(page) ? readStored(page) : StoredStatistics();
  frame::writeStepHead(page);
  controls.write(page.response, {{"fields", fields}, {"groups", groups}});
  page.response.write("<script>\r\n" +
                      withoutLineEnds(script.fill({{"groups", groups},
                                                   {"shown", shownCaption(fields)},
                                                   {"step", step},
                                                   {"table", mainTable}})) +
                      "\r\n" + statisticsScript(page, stored) + groupingScript(stored.grouping) +
                      "</script>\r\n</body>\r\n</html>\r\n");
}

void addSearchDlg5(Page& page) {
  frame::writeStepOpening(page);
}

}  // namespace tarlo::scheme
