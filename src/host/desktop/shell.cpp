#include <algorithm>

#include "embedded_host_pages.h"
#include "frame/page_text.h"
#include "host/context/content_policy.h"
#include "host/desktop/desktop.h"
#include "host/desktop/desktop_data.h"
#include "text/fold.h"

namespace tarlo::host {
namespace {

namespace pages = embedded::host_pages;
using frame::PageText;

// Line ends as pages have them.
std::string scriptOf(std::string_view name) {
  return PageText(pages::find(name)).fill();
}

// An address on this server, or a full one of the web. Anything else that a browser would run or
// open (javascript:, data:, file:) is none: the table is data, and its text must not become script.
bool isPageAddress(std::string_view href) {
  const std::size_t colon = href.find(':');
  if (colon == std::string_view::npos || href.find_first_of("/?#") < colon) return true;
  std::string scheme;
  // Browsers drop control characters and blanks in front of and inside a scheme's name.
  for (const char c : href.substr(0, colon)) {
    if (static_cast<unsigned char>(c) <= ' ') continue;
    scheme += text::folded(c);
  }
  return scheme == "http" || scheme == "https";
}

void refuse(Page& page, std::string_view reason) {
  static const PageText refusal(pages::find("desktop/refusal.html"));
  beginOwnPage(page.response);
  refusal.write(page.response, {{"scheme", takeStyle(page)}, {"reason", reason}});
}

void writeFolder(Page& page, const MenuEntry& entry) {
  static const PageText folder(pages::find("desktop/folder.html"));
  folder.write(page.response, {{"scheme", takeStyle(page)},
                               {"nonce", beginOwnPage(page.response)},
                               {"id", std::to_string(entry.id)},
                               {"name", entry.name},
                               {"description", entry.description},
                               {"cards", menuCardsHtml(entry.children)}});
}

}  // namespace

void writeShell(Page& page) {
  const DesktopUser user = currentUser(page);
  const std::string menu = menuTreeHtml(menuTree(page, user.id));
  static const std::string script = scriptOf("desktop/shell.js") +
                                    scriptOf("desktop/shell_menu.js") +
                                    scriptOf("desktop/shell_tools.js");
  static const PageText shell(pages::find("desktop/shell.html"));
  shell.write(page.response, {{"scheme", takeStyle(page)},
                              {"nonce", beginOwnPage(page.response, OwnPage::Desktop)},
                              {"user", user.name},
                              {"department", user.department},
                              {"menu", menu},
                              {"script", script}});
}

void writePane(Page& page) {
  const DesktopUser user = currentUser(page);
  static const PageText pane(pages::find("desktop/pane.html"));
  pane.write(page.response, {{"scheme", takeStyle(page)},
                             {"nonce", beginOwnPage(page.response, OwnPage::Pane)},
                             {"user", user.name},
                             {"department", user.department}});
}

void openMenu(Page& page, std::string_view menuId) {
  takeStyle(page);
  if (menuId.empty() || menuId == "0") {
    page.session.put("usrICID", "0");
    return writeStart(page);
  }
  const std::optional<int> id = positiveNumber(menuId);
  const std::optional<MenuEntry> entry =
      id ? menuEntry(page, currentUser(page).id, *id) : std::nullopt;
  if (!entry) return refuse(page, "此功能不存在，或者您没有使用它的权限。");
  if (!isPageAddress(entry->href)) return refuse(page, "此功能的地址无效，请与系统管理员联系。");
  page.session.put("usrICID", std::to_string(entry->id));
  if (entry->isFolder()) return writeFolder(page, *entry);
  static const PageText open(pages::find("desktop/open.html"));
  open.write(page.response, {{"nonce", beginOwnPage(page.response)},
                             {"id", std::to_string(entry->id)},
                             {"address", entry->href}});
}

void writeSignInPage(Page& page, std::string_view message, std::string_view next) {
  const std::string note = message.empty()
                               ? std::string()
                               : "<p class=\"dt-alert\" role=\"alert\">" +
                                     frame::inPlace(frame::Place::Encoded, message) + "</p>";
  static const PageText signIn(pages::find("desktop/sign_in.html"));
  signIn.write(page.response, {{"scheme", takeStyle(page)},
                               {"nonce", beginOwnPage(page.response)},
                               {"message", note},
                               {"next", next}});
}

}  // namespace tarlo::host
