#include "scheme/page_frame.h"

#include <algorithm>
#include <array>

#include "embedded_scheme_pages.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "frame/policy.h"
#include "frame/sibling_calls.h"
#include "scheme/module_links.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using frame::callMethod;
using frame::PageText;

struct ColourScheme {
  std::string_view number;  // as in Session("usrStyle")
  std::string_view word;    // ends the class names of the frameset's panes
  std::string_view caption;
};

constexpr std::array<ColourScheme, 4> kColourSchemes = {{
    {"1", "sea", "Ocean & Sky"},
    {"2", "olive", "Olive & Lemon"},
    {"3", "orange", "Flower of Romantic love"},
    {"4", "sun", "Golden sun"},
}};
// The page's script asks for the schemes in another order than the menu shows them.
constexpr std::array<std::size_t, 4> kScriptOrder = {0, 1, 3, 2};

constexpr std::string_view kColourMenu = "SubMenu1";

// Nothing when the style names no scheme.
const ColourScheme* schemeOf(const Variant& style) {
  const auto* found = std::ranges::find_if(kColourSchemes, [&](const ColourScheme& scheme) {
    return variant::equalsAsText(style, scheme.number);
  });
  return found == kColourSchemes.end() ? nullptr : found;
}

std::string moduleId(Page& page) {
  return std::to_string(variant::toInt32(page.session.get("usrICID")));
}

void addPermissionEntry(Page& page, Object& menu) {
  if (isWorkflowChild(page)) return;
  const std::string module = moduleId(page);
  const auto workflow = moduleWorkflow(page);
  const std::string href =
      workflow ? "javascript:GrantPermissionTempWFI(" + module + "," + *workflow + ");"
               : "javascript:GrantPermissionTemp(" + module + ");";
  callMethod(menu, "AddMenu0", {"User temporary operation under authorization", href, "", ""});
}

void addColourEntries(Page& page, Object& menu) {
  const std::string module = moduleId(page);
  const auto add = [&](std::string_view caption, std::string_view number) {
    // One blank in front of the first entry's call and two in front of the others': kept as it is.
    const std::string href = (number == "1" ? "javascript: " : "javascript:  ") +
                             ("ZembraSaveStyle(" + module + "," + std::string(number)) +
                             ");window.location = window.location.href;";
    callMethod(menu, "AddSubMenu", {caption, href, "", kColourMenu});
  };
  for (const ColourScheme& scheme : kColourSchemes) add(scheme.caption, scheme.number);
  callMethod(menu, "AddSubMenu", {"", "", "", kColourMenu});
  add("Recover system's default color scheme", "0");
}

// The title with the colour scheme's icon. The division and the image carry the same id: the foot's
// script reaches them as elements 0 and 1 of it.
std::string headingText(const ColourScheme& scheme, std::string_view title) {
  const std::string word(scheme.word);
  return "<div id=Zembra_Head_Style class='ZembraxTitle_" + word +
         "'><img id=Zembra_Head_Style src='/images/icoDefault_" + word +
         ".gif' border=0>&nbsp;Zembra " + frame::inPlace(frame::Place::Text, title) + "</div>";
}

std::shared_ptr<Object> makeMenu(Page& page, std::string_view title) {
  auto menu = page.server.createObject("Tarlo.menu");
  menu->put("title", title);
  menu->put("Left", 20);
  menu->put("Top", 40);
  return menu;
}

void writeSidePane(Page& page, SidePane pane) {
  static const PageText links(embedded::scheme_pages::find("side_pane_links.html"));
  static const PageText oem(embedded::scheme_pages::find("side_pane_oem.html"));
  const bool isLinks = pane == SidePane::Links;
  const std::string text = isLinks ? neighbourLinks(page) : frame::getOEMInfoHTML(page);
  (isLinks ? links : oem).write(page.response, {{"text", text}});
}

}  // namespace

void writePageHead(Page& page, const Variant& title) {
  static const PageText head(embedded::scheme_pages::find("page_head.html"));
  static const PageText headEnd(embedded::scheme_pages::find("page_head_end.html"));
  frame::writeResponseSettings(page.response);
  const bool hasMenu = title.isObject();
  const std::string text = variant::spliced(hasMenu ? title.object()->get("title") : title);
  head.write(page.response, {{"title", text}});

  const std::shared_ptr<Object> menu = hasMenu ? title.object() : makeMenu(page, text);
  // "Curren" stands in front of a page's own menu as it always has.
  callMethod(
      *menu, "AddMenu0",
      {hasMenu ? "Curren page color scheme" : "Current page color scheme", "", "", kColourMenu});
  addPermissionEntry(page, *menu);
  addColourEntries(page, *menu);
  callMethod(*menu, "AddMenu0", {"", "", "", ""});
  const ColourScheme* scheme = schemeOf(page.session.get("usrStyle"));
  menu->put("title", headingText(scheme != nullptr ? *scheme : kColourSchemes[0], text));
  page.response.write(variant::spliced(callMethod(*menu, "WriteMenu")));
  headEnd.write(page.response);
}

void writePageFoot(Page& page) {
  static const PageText foot(embedded::scheme_pages::find("page_foot.html"));
  static const PageText footEnd(embedded::scheme_pages::find("page_foot_end.html"));
  foot.write(page.response);
  writeStylePane(page, page.session.get("usrStyle"), SidePane::Links);
  footEnd.write(page.response);
}

void writeStylePane(Page& page, const Variant& style, SidePane pane) {
  static const PageText module(embedded::scheme_pages::find("module_style.html"));
  static const PageText moduleCase(embedded::scheme_pages::find("module_style_case.html"));
  static const PageText session(embedded::scheme_pages::find("session_style.html"));
  writeSidePane(page, pane);
  module.write(page.response, {{"module", moduleId(page)}});
  for (const std::size_t index : kScriptOrder) {
    const ColourScheme& scheme = kColourSchemes[index];
    moduleCase.write(page.response, {{"number", scheme.number}, {"word", scheme.word}});
  }
  const ColourScheme* scheme = schemeOf(style);
  session.write(page.response, {{"word", scheme != nullptr ? scheme->word : ""}});
}

}  // namespace tarlo::scheme
