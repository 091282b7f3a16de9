#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "frame/statement_scope.h"
#include "scheme/extras.h"
#include "scheme/operations.h"
#include "scheme/posted_definition.h"
#include "scheme/titles.h"
#include "variant/error_state.h"

namespace tarlo::scheme {

using frame::PageText;

void previewSearchdlg(Page& page) {
  static const PageText fields(embedded::scheme_pages::find("preview_fields.html"));
  static const PageText refused(embedded::scheme_pages::find("preview_refused.html"));
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
