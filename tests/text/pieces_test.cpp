#include "text/pieces.h"

#include <gtest/gtest.h>

#include "text/fold.h"

namespace tarlo::text {
namespace {

TEST(Pieces, ReplacesSplitsAndJoins) {
  EXPECT_EQ(replace("aaa", "aa", "b"), "ba");
  EXPECT_EQ(replace("a<b<", "<", "<<"), "a<<b<<");
  EXPECT_EQ(replace("aAa", "a", ""), "A");
  EXPECT_EQ(replace("abc", "", "x"), "abc");

  using Pieces = std::vector<std::string_view>;
  EXPECT_EQ(split("", ","), Pieces{});
  EXPECT_EQ(split(",", ","), (Pieces{"", ""}));
  EXPECT_EQ(split("a>>>>>>b>>>", ">>>>>>"), (Pieces{"a", "b>>>"}));
  EXPECT_EQ(split("a,b", ""), (Pieces{"a,b"}));
  EXPECT_EQ(join(split("中,文,", ","), ";"), "中;文;");
  EXPECT_EQ(join({}, ","), "");
}

TEST(Pieces, TrimsBlanksOnlyAndFoldsAsciiOnly) {
  EXPECT_EQ(trim("  a b \t "), "a b \t");
  EXPECT_EQ(trim("   "), "");
  EXPECT_EQ(ltrim(" a "), "a ");
  EXPECT_EQ(rtrim(" a "), " a");
  EXPECT_TRUE(equalsNoCase("addSearchDlg_1", "ADDSEARCHDLG_1"));
  EXPECT_FALSE(equalsNoCase("@", "`"));
  EXPECT_FALSE(equalsNoCase("a", "ab"));
  EXPECT_EQ(foldedName("@ÄBc[Z`z{"), "@Äbc[z`z{");
  EXPECT_EQ(upperName("@äbC[z`Z{"), "@äBC[Z`Z{");
  EXPECT_TRUE(precedesNoCase("_a", "B"));
  EXPECT_FALSE(precedesNoCase("B", "a"));
}

}  // namespace
}  // namespace tarlo::text
