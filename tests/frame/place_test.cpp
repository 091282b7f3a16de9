#include "frame/place.h"

#include <gtest/gtest.h>

#include "frame/page_text.h"
#include "support/page_structure.h"

namespace tarlo::frame {
namespace {

using tarlo::testing::decoded;

constexpr Place kTexts[] = {Place::Text,      Place::Textarea,        Place::Encoded,
                            Place::Attribute, Place::AttributeSingle, Place::Bare};

TEST(Place, AHarmlessValueStaysAsItIs) {
  constexpr Place kAll[] = {Place::Built,        Place::Text,    Place::Textarea,
                            Place::Attribute,    Place::Encoded, Place::AttributeSingle,
                            Place::Kept,         Place::Script,  Place::ScriptSingle,
                            Place::ScriptDouble, Place::Address};
  for (const char* value : {"", "查询 方案-1;(a,b)|%41+#[x].y=`/", "\xF0\x9F\x98\x80"}) {
    for (const Place place : kAll) EXPECT_EQ(inPlace(place, value), value);
  }
  EXPECT_EQ(inPlace(Place::Bare, "12a"), "12a");
  EXPECT_EQ(inPlace(Place::Json, "a b"), "\"a b\"");
}

// What browsers make of the escape is the value; what they would not mistake stays.
TEST(Place, TextsAreReadBackExactly) {
  for (const char* value : {"a<b", "\"'<>&", "&lt;b&gt;", "&amp;", "a & b &", "&#39;x&copy=1&copy",
                            "</textarea>", "<!--", "x<", "1 < 2 > 0"}) {
    for (const Place place : kTexts) EXPECT_EQ(decoded(inPlace(place, value)), value);
  }
  EXPECT_EQ(inPlace(Place::Text, "1 < 2 > \"0\" & so"), "1 < 2 > \"0\" & so");
  EXPECT_EQ(inPlace(Place::Textarea, "a<b </x"), "a<b &lt;/x");
  EXPECT_EQ(inPlace(Place::Textarea, "\nx"), "\r\n\nx");
  EXPECT_EQ(inPlace(Place::Attribute, "/x?a=1&b=2&lt;'"), "/x?a=1&b=2&amp;lt;'");
  EXPECT_EQ(inPlace(Place::AttributeSingle, "it's \"x\""), "it&#39;s \"x\"");
  EXPECT_EQ(inPlace(Place::AttributeSingle, "&#128512;&#60;&#x3c;&#9999999999;&#128"),
            "&#128512;&amp;#60;&amp;#x3c;&amp;#9999999999;&amp;#128");
  EXPECT_EQ(inPlace(Place::Kept, "&#128512;&nbsp;<&x"), "&#128512;&nbsp;&lt;&amp;x");
}

TEST(Place, NothingEndsAScriptString) {
  struct Row {
    Place place;
    const char* value;
    const char* escaped;
  };
  const Row rows[] = {
      {Place::Script, "it's \"x\"\\\r\n", "it\\'s \\\"x\\\"\\\\\\r\\n"},
      {Place::Script, "</td><!--<b><", "\\x3c/td>\\x3c!--<b>\\x3c"},
      {Place::Script, "\u2028\u2029\u2027", "\\u2028\\u2029\u2027"},
      {Place::ScriptSingle, "'\"\\\r\n\n", "\\'\"\\\\\\n\\n"},
      {Place::ScriptSingle, "</td></SCRIPT><!--<script", "</td>\\x3c/SCRIPT>\\x3c!--\\x3cscript"},
      {Place::ScriptSingle, "a</scr", "a\\x3c/scr"},  // the page may go on with "ipt>"
      {Place::ScriptDouble, "'\"\\", "'\\\"\\\\"},
      {Place::Json, "</script>\"\\\xF0\x9F\x98\x80\xFF",
       "\"\\u003c/script>\\u0022\\u005c\\ud83d\\ude00\\ufffd\""},
      {Place::Address, "1&x='\"<>\\\r\n%", "1%26x=%27%22%3C%3E%5C%0D%0A%"},
  };
  for (const Row& row : rows) EXPECT_EQ(inPlace(row.place, row.value), row.escaped);
}

TEST(Place, NumbersAndNamesAreNothingElse) {
  for (const char* value : {"0", "-12", "+3.5", "1e5"}) {
    EXPECT_EQ(inPlace(Place::Number, value), value);
  }
  for (const char* value : {"", "1;x", "x", "1.", "-", "1e", "0x10", " 1"}) {
    EXPECT_EQ(inPlace(Place::Number, value), "0");
  }
  EXPECT_EQ(inPlace(Place::Numbers, "12,-1"), "12,-1");
  EXPECT_EQ(inPlace(Place::Numbers, "12,-1,x()"), "0");
  EXPECT_EQ(inPlace(Place::Name, "_box$1框"), "_box$1框");
  for (const char* value : {"", "1a", "a.b", "a b", "a()", "a;b"}) {
    EXPECT_EQ(inPlace(Place::Name, value), "_");
  }
}

TEST(PageText, HolesNameTheirPlacesFromTheInsideOut) {
  const PageText text("<a onclick=\"f('{{x:script:attribute}}')\">{{x:text}}</a>\n");
  EXPECT_EQ(text.fill({{"x", "a'\"<b"}}), "<a onclick=\"f('a\\'\\&quot;<b')\">a'\"&lt;b</a>\r\n");
  for (const char* broken : {"{{x}}", "{{x:}}", "{{x:nowhere}}", "{{x:text:}}", "{{x:text"}) {
    EXPECT_THROW(PageText{broken}, std::logic_error) << broken;
  }
  EXPECT_THROW(text.fill({{"x", ""}, {"y", ""}}), std::logic_error);
  EXPECT_THROW(text.fill(), std::logic_error);
}

}  // namespace
}  // namespace tarlo::frame
