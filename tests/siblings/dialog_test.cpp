// The stepped dialog and the dialog of one page.

#include <gtest/gtest.h>

#include "frame/local_page.h"
#include "frame/sibling_calls.h"
#include "siblings/components.h"
#include "support/errors.h"
#include "support/text.h"
#include "variant/convert.h"

namespace tarlo::siblings {
namespace {

using frame::callMethod;
using testing::errorOf;
using testing::holds;

class Dialogs : public ::testing::Test {
 protected:
  database::Registry databases_;
  frame::LocalPage local_{databases_, "sqlite:none.db"};
};

TEST_F(Dialogs, WriteWhatScriptsRelyOn) {
  const auto dialog = makeWebDialog();
  frame::connectToPage(local_.page(), *dialog, frame::kSessionAndResponse);
  dialog->put("TITLE", "a<b");
  dialog->put("TotalStep", "2");
  dialog->put("FormAction", "X.Zembra\"");
  dialog->put("addjs", "<script>function doFirstStep(){}</script>");
  dialog->put("addHTML", "<iframe name='s0iframe'></iframe>");
  dialog->put("HelpTitle", "H");
  dialog->put("HelpHtml", "<li>help</li>");
  callMethod(*dialog, "addStep", {"one \"1\"", "<tarlo:combobox id=c />", "next('</script>')", ""});
  callMethod(*dialog, "AddStep", {"two", "<p>", "", "back()"});
  callMethod(*dialog, "writeDialog");
  const std::string page = local_.written();
  EXPECT_TRUE(page.starts_with("<html xmlns:tarlo"));  // no doctype: the pages need quirks mode
  for (const std::string_view part :
       {"<title>a&lt;b</title>",
        "<form id=\"TarloDialog\" name=\"TarloDialog\" method=\"post\" action=\"X.Zembra&quot;\" "
        "target=\"pophidden\">",
        "aria-label=\"one &quot;1&quot;\"><div class=\"tarlo-step-content\"><tarlo:combobox id=c "
        "/></div></section>",
        "<iframe name=\"pophidden\"", "<iframe name=\"hidden\"", "id=\"btnNext\"",
        "<script>function doFirstStep(){}</script>\r\n<script>\r\nTarloWizard.start(",
        "[{\"next\":\"next('\\u003c/"
        "script>')\",\"back\":\"\"},{\"next\":\"\",\"back\":\"back()\"}]",
        "<h3>H</h3><ul><li>help</li></ul>", "<iframe name='s0iframe'></iframe>"}) {
    EXPECT_TRUE(holds(page, part)) << part;
  }
  EXPECT_FALSE(holds(page, "name=\"submit\""));  // it would hide the form's own submit()
  EXPECT_EQ(variant::toInt32(dialog->get("totalstep")), 2);
}

TEST_F(Dialogs, OfOnePageCloseThemselves) {
  const auto dialog = makeSingleDialog();
  const std::shared_ptr<Object> context = std::make_shared<frame::ContextObject>(local_.page());
  callMethod(*dialog, "ASPConnect", {context, context});
  dialog->put("title", "T");
  dialog->put("bodyHtml", "<b>body</b>");
  dialog->put("bgcolor", "red\" onload=\"x");
  dialog->put("ViewType", 2);
  callMethod(*dialog, "writeDialog");
  EXPECT_TRUE(holds(local_.written(), "<b>body</b>"));
  EXPECT_TRUE(holds(local_.written(), "value=\"关闭\" onclick=\"window.close()\""));
  EXPECT_FALSE(holds(local_.written(), "onload"));
}

TEST_F(Dialogs, RefuseWrongCalls) {
  for (const auto& make : {makeWebDialog, makeSingleDialog}) {
    const auto dialog = make();
    EXPECT_EQ(errorOf([&] { callMethod(*dialog, "writeDialog"); }), 91);
    EXPECT_EQ(errorOf([&] { callMethod(*dialog, "ASPConnect", {1}); }), 91);
    EXPECT_EQ(errorOf([&] { callMethod(*dialog, "writeDialog", {1}); }), 450);
    EXPECT_EQ(errorOf([&] { callMethod(*dialog, "closeDialog"); }), 438);
    EXPECT_EQ(errorOf([&] { dialog->put("colour", 1); }), 438);
  }
}

}  // namespace
}  // namespace tarlo::siblings
