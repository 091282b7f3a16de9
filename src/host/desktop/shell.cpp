#include "embedded_host_pages.h"
#include "frame/template.h"
#include "host/context/content_policy.h"
#include "host/desktop/desktop.h"
#include "host/desktop/desktop_style.h"
#include "host/desktop/menu_html.h"

namespace tarlo::host {
namespace {

namespace pages = embedded::host_pages;
using frame::Template;

// Line ends as pages have them.
std::string scriptOf(std::string_view name) {
  return Template(pages::find(name)).fill();
}

}  // namespace

void writeShell(Page& page) {
  const DesktopUser user = currentUser(page);
  const std::string menu = menuTreeHtml(menuTree(page, user.id));
  static const std::string script = scriptOf("desktop/shell.js") +
                                    scriptOf("desktop/shell_menu.js") +
                                    scriptOf("desktop/shell_tools.js");
  static const Template shell(pages::find("desktop/shell.html"));
  shell.write(page.response, {{"scheme", takeStyle(page)},
                              {"nonce", beginOwnPage(page.response, OwnPage::Desktop)},
                              {"user", user.name},
                              {"department", user.department},
                              {"menu", menu},
                              {"script", script}});
}

void writePane(Page& page) {
  const DesktopUser user = currentUser(page);
  static const Template pane(pages::find("desktop/pane.html"));
  pane.write(page.response, {{"scheme", takeStyle(page)},
                             {"nonce", beginOwnPage(page.response, OwnPage::Pane)},
                             {"user", user.name},
                             {"department", user.department}});
}

void writeSignInPage(Page& page, std::string_view message, std::string_view next) {
  const std::string note = message.empty()
                               ? std::string()
                               : "<p class=\"dt-alert\" role=\"alert\">" +
                                     frame::inPlace(frame::Place::Encoded, message) + "</p>";
  static const Template signIn(pages::find("desktop/sign_in.html"));
  signIn.write(page.response, {{"scheme", takeStyle(page)},
                               {"nonce", beginOwnPage(page.response)},
                               {"message", note},
                               {"next", next}});
}

}  // namespace tarlo::host
