#include "scheme/preview_page.h"

#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/statement_scope.h"
#include "frame/template.h"
#include "scheme/posted_definition.h"
#include "scheme/preview_extras.h"
#include "scheme/title_table.h"
#include "scheme/wizard_extras.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::Template;
using variant::spliced;

}  // namespace

std::vector<std::string> titlesInList(std::string_view statement) {
  constexpr std::size_t kSelect = 7;  // "select "
  const std::size_t from = statement.find(" from ");
  const std::string_view head = statement.substr(0, from);
  const std::string_view list = head.size() > kSelect ? head.substr(kSelect) : std::string_view();
  std::vector<std::string> titles;
  for (const std::string_view item : text::split(list, ",")) {
    const auto parts = text::split(item, " as ");
    if (parts.size() < 2) continue;
    std::string_view title = text::trim(parts.back());
    if (title.size() > 1 && title.front() == '[') title = title.substr(1, title.size() - 2);
    titles.emplace_back(title);
  }
  return titles;
}

void previewSearchdlg(Page& page) {
  static const Template fields(embedded::scheme_pages::find("preview_fields.html"));
  static const Template refused(embedded::scheme_pages::find("preview_refused.html"));
  ErrorState err;
  compile::Definition definition;
  err.run([&] { definition = postedDefinition(page, Blanks::Trimmed); });
  frame::writeStepHead(page);
  std::string statement;
  err.run([&] { statement = compile::compileDefinition(page, definition); });
  err.clear();
  err.run([&] { frame::asDesigner(page, [&] { frame::execSQL(page, statement); }); });
  if (err.failed()) {
    refused.write(page.response);
    if (hasExtras(page)) page.response.write(refusalReason(page, definition, statement));
  } else {
    fields.write(page.response, {{"rows", titleRows(titlesInList(statement))}});
    if (hasExtras(page)) page.response.write(firstRows(page, statement));
  }
  page.response.write("</body>\r\n</html>\r\n");
}

}  // namespace tarlo::scheme
