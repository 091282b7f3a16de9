#include "embedded_host_pages.h"
#include "frame/template.h"
#include "host/desktop/desktop.h"
#include "host/desktop/desktop_style.h"
#include "host/desktop/menu_html.h"

namespace tarlo::host {
namespace {

namespace pages = embedded::host_pages;

std::string scriptText(std::string_view name) {
  return frame::Template(pages::find(name)).fill();
}

}  // namespace

void writeShell(Page& page) {
  const DesktopUser user = currentUser(page);
  const std::string menu = menuTreeHtml(page, menuTree(page, user.id));
  const std::string script = scriptText("desktop/shell.js") + scriptText("desktop/shell_menu.js") +
                             scriptText("desktop/shell_tools.js");
  frame::Template(pages::find("desktop/shell.html"))
      .write(page.response, {{"scheme", takeStyle(page)},
                             {"user", page.server.htmlEncode(user.name)},
                             {"department", page.server.htmlEncode(user.department)},
                             {"menu", menu},
                             {"script", script}});
}

void writePane(Page& page) {
  const DesktopUser user = currentUser(page);
  frame::Template(pages::find("desktop/pane.html"))
      .write(page.response, {{"scheme", takeStyle(page)},
                             {"user", page.server.htmlEncode(user.name)},
                             {"department", page.server.htmlEncode(user.department)}});
}

void writeSignInPage(Page& page, std::string_view message, std::string_view next) {
  const std::string note = message.empty() ? std::string()
                                           : "<p class=\"dt-alert\" role=\"alert\">" +
                                                 page.server.htmlEncode(message) + "</p>";
  frame::Template(pages::find("desktop/sign_in.html"))
      .write(
          page.response,
          {{"scheme", takeStyle(page)}, {"message", note}, {"next", page.server.htmlEncode(next)}});
}

}  // namespace tarlo::host
