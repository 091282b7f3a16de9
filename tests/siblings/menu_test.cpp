#include <gtest/gtest.h>

#include "frame/sibling_calls.h"
#include "siblings/components.h"
#include "support/text.h"
#include "variant/convert.h"
#include "variant/runtime_error.h"

namespace tarlo::siblings {
namespace {

using tarlo::testing::holds;

using frame::callMethod;

std::size_t countOf(const std::string& text, const std::string& wanted) {
  std::size_t count = 0;
  for (auto at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1))
    ++count;
  return count;
}

TEST(Menu, WritesItsTitleOnceAndItsEntriesWhereTheyBelong) {
  auto menu = makeMenu();
  menu->put("Left", 20);
  menu->put("TITLE", "plain");
  callMethod(*menu, "AddMenu0", {"Colour & form", "", "", "SubMenu1"});
  callMethod(*menu, "AddMenu0", {"Grant", "javascript:Grant(1);", "", ""});
  callMethod(*menu, "AddSubMenu",
             {"Ocean & Sky", "javascript: Save(1,\"a\");", "main", "SubMenu1"});
  callMethod(*menu, "AddSubMenu", {"", "", "", "SubMenu1"});
  callMethod(*menu, "AddSubMenu", {"Elsewhere", "/x", "", "SubMenu2"});
  callMethod(*menu, "AddMenu0", {"", "", "", ""});
  menu->put("title", "<div id=Head><img id=Head></div>");
  const std::string html = variant::spliced(callMethod(*menu, "writemenu"));
  EXPECT_EQ(countOf(html, "id=Head"), 2u);
  EXPECT_FALSE(holds(html, "plain"));
  EXPECT_TRUE(holds(
      html, "href=\"javascript: Save(1,&quot;a&quot;);\" target=\"main\">Ocean &amp; Sky</a>"))
      << html;
  EXPECT_EQ(countOf(html, "aria-haspopup"), 1u);
  EXPECT_EQ(countOf(html, "role=\"separator\""), 2u);
  EXPECT_FALSE(holds(html, "Elsewhere"));
  EXPECT_EQ(variant::spliced(menu->get("title")), "<div id=Head><img id=Head></div>");
}

TEST(Menu, RefusesUnknownMembersAndWrongCalls) {
  auto menu = makeMenu();
  EXPECT_THROW(menu->put("Width", 1), RuntimeError);
  EXPECT_THROW(callMethod(*menu, "AddMenu0", {"a", "b"}), RuntimeError);
  menu->put("Left", "1px;color:red");
  EXPECT_FALSE(holds(variant::spliced(callMethod(*menu, "WriteMenu")), "red"));
}

}  // namespace
}  // namespace tarlo::siblings
