#include <fmt/format.h>

#include <optional>

#include "control/control.h"
#include "embedded_host_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "frame/sibling_calls.h"
#include "frame/statement_scope.h"
#include "host/context/content_policy.h"
#include "host/desktop/desktop.h"
#include "host/desktop/desktop_data.h"
#include "services/data_sources.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::host {
namespace {

using control::Control;
using control::ControlKind;
using frame::PageText;
using variant::spliced;

// The control that the address names, else the first of the kind; an unnamed one when there is
// none.
Control controlFor(Page& page, std::string_view key, ControlKind kind) {
  std::string id = spliced(page.request.value(key));
  if (!positiveNumber(id)) {
    id = frame::firstText(
        page, fmt::format("select min(QF_ID) from Zembra_Query_Field where QF_FieldType={} and "
                          "QF_System=0 and Zembra_Flag<>0",
                          static_cast<int>(kind)));
  }
  auto control = id.empty() ? std::nullopt : control::loadControl(page, std::stoll(id));
  if (control && control->kind == kind) return std::move(*control);
  Control none;
  none.name = "（没有这一类控件方案）";
  return none;
}

std::string optionsOf(Page& page, const Control& control) {
  return control.statement.empty() ? "" : services::storedOptions(page, control.statement);
}

// The list's markup has one script, which makes its object; values in it cannot begin another.
std::string withNonce(std::string markup, std::string_view nonce) {
  constexpr std::string_view kScript = "<script>";
  const auto at = markup.find(kScript);
  if (at == std::string::npos) return markup;
  return markup.replace(at, kScript.size(), fmt::format("<script nonce=\"{}\">", nonce));
}

// Nothing for a list that no longer runs.
std::string gridOf(Page& page, const Control& control) {
  if (!control::runs(page, control)) return {};
  const frame::StatementScope scope(page, frame::kDesignersRights);
  const frame::AccessScope access(page, {frame::Caller::FormUser});
  std::vector<std::string_view> titles(control.titles.begin(), control.titles.end());
  const auto grid = page.server.createObject("TarloTable.table");
  frame::connectToPage(page, *grid, frame::kGridContext);
  grid->put("id", "SearchTable");
  grid->put("SelectionStyle", 2);
  grid->put("title", text::join(titles, "|"));
  grid->put("sql", control.statement);
  grid->put("Pagesize", 8);
  grid->put("MultiPage", true);
  grid->put("Width", "100%");
  grid->put("showMenu", false);
  grid->put("Search", true);
  return spliced(frame::callMethod(*grid, "getTableHtml"));
}

// What the form has sent, for the reader.
std::string postedText(Page& page) {
  std::string items;
  for (const std::string_view name : {"dropDown", "cascade", "listRow", "apiRow"}) {
    const Variant value = page.request.value(name);
    if (value.isEmpty()) continue;
    items += fmt::format("<li>{} = {}</li>", name,
                         frame::inPlace(frame::Place::Encoded, spliced(value)));
  }
  if (items.empty()) return {};
  return "<div class=\"tarlo-demo-posted\" role=\"status\">收到的值：<ul>" + items +
         "</ul></div>\r\n";
}

std::string levelsOf(const Control& control) {
  return text::join({control.levels.begin(), control.levels.end()}, ";");
}

}  // namespace

void writeDemoForm(Page& page) {
  static const PageText form(embedded::host_pages::find("demo/form.html"));
  const Control dropDown = controlFor(page, "dropDownID", ControlKind::DropDown);
  const Control cascade = controlFor(page, "cascadeID", ControlKind::Cascade);
  const Control list = controlFor(page, "listID", ControlKind::List);
  const std::string nonce = beginOwnPage(page.response, OwnPage::Tags);
  form.write(page.response, {{"scheme", takeStyle(page)},
                             {"nonce", nonce},
                             {"posted", postedText(page)},
                             {"query", fmt::format("dropDownID={}&cascadeID={}&listID={}",
                                                   dropDown.id, cascade.id, list.id)},
                             {"dropDownName", dropDown.name},
                             {"dropDown", optionsOf(page, dropDown)},
                             {"cascadeName", cascade.name},
                             {"levels", levelsOf(cascade)},
                             {"cascade", optionsOf(page, cascade)},
                             {"listName", list.name},
                             {"list", withNonce(gridOf(page, list), nonce)},
                             {"listId", std::to_string(list.id)}});
}

}  // namespace tarlo::host
