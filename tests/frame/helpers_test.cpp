#include "frame/helpers.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <map>

#include "frame/local_page.h"
#include "variant/convert.h"

namespace tarlo::frame {
namespace {

class Helpers : public ::testing::Test {
 protected:
  database::Registry databases_;
  LocalPage local_{databases_, ""};
  Page& page_ = local_.page();
};

TEST_F(Helpers, PreSQLFormatGivesALiteralAndWritesItBack) {
  struct Row {
    Variant value;
    Variant bolnull;
    std::string literal;
  };
  const Row rows[] = {
      {"", true, "null"},
      {"   ", true, "null"},
      {"   ", false, "''"},
      {{}, true, "null"},
      {"", 1, "''"},
      {"", -1, "null"},
      {"", variant::Null{}, "''"},
      {"\t", true, "'\t'"},
      {" a ", false, "' a '"},
      {"O'Neil", false, "'O''Neil'"},
      {"a<b>\"c\"", false, "'a＜b＞&quot;c&quot;'"},
      {"'; drop table t --", true, "'''; drop table t --'"},
      {"&lt;", true, "'&lt;'"},
      {12.5, true, "'12.5'"},
      {"中文", false, "'中文'"},
  };
  for (const Row& row : rows) {
    Variant value = row.value;
    EXPECT_EQ(preSQLFormat(page_, value, row.bolnull).text(), row.literal);
    EXPECT_EQ(value.text(), row.literal);
  }
  Variant null = variant::Null{};
  EXPECT_THROW(preSQLFormat(page_, null, true), RuntimeError);
  EXPECT_TRUE(null.isNull());
}

TEST_F(Helpers, EncodesForPagesAndAttributes) {
  EXPECT_EQ(replaceChar(page_, "&lt;").text(), "&amp;lt;");
  EXPECT_EQ(replaceChar(page_, "a'b\"<&>").text(), "a''b&quot;&lt;&amp;&gt;");
  EXPECT_EQ(replaceChar(page_, variant::Null{}).text(), "");
  EXPECT_EQ(ServerHTMLEncode(page_, "<a b=\"c\">'&amp;").text(),
            "&lt;a b=&quot;c&quot;&gt;'&amp;amp;");
  EXPECT_EQ(ServerHTMLEncode(page_, variant::Null{}).text(), "");
  EXPECT_EQ(page_.server.urlEncode("a b-_.&=中"), "a+b%2D%5F%2E%26%3D%E4%B8%AD");
}

TEST_F(Helpers, ValidINT) {
  for (const Variant& good : {Variant("-2147483648"), Variant(2147483647), Variant(1.5),
                              Variant(" 7 "), Variant(true), Variant("2147483647.0")}) {
    EXPECT_TRUE(validINT(page_, good).boolean()) << variant::toText(good);
  }
  for (const Variant& bad :
       {Variant(""), Variant("abc"), Variant(std::int64_t{2147483648}), Variant("-2147483649"),
        Variant("2147483647.5"), Variant("1e999"), Variant("1;2"), Variant()}) {
    EXPECT_FALSE(validINT(page_, bad).boolean()) << variant::toText(bad);
  }
  EXPECT_FALSE(validINT(page_, variant::Null{}).boolean());
}

TEST_F(Helpers, IsNothing) {
  EXPECT_TRUE(isNothing(page_, variant::Null{}).boolean());
  EXPECT_TRUE(isNothing(page_, {}).boolean());
  EXPECT_TRUE(isNothing(page_, "").boolean());
  EXPECT_FALSE(isNothing(page_, 0).boolean());
  EXPECT_FALSE(isNothing(page_, " ").boolean());
  EXPECT_FALSE(isNothing(page_, false).boolean());
}

TEST_F(Helpers, GetDateTimeWritesAScriptsArguments) {
  getDateTime(page_);
  int year = 0, month = 0, day = 0, hour = -1, minute = -1, second = -1, length = 0;
  const std::string& text = local_.written();
  ASSERT_EQ(std::sscanf(text.c_str(), "%4d,%2d,%2d,%2d,%2d,%2d%n", &year, &month, &day, &hour,
                        &minute, &second, &length),
            6)
      << text;
  EXPECT_EQ(static_cast<std::size_t>(length), text.size()) << text;
  EXPECT_TRUE(year > 2000 && month >= 1 && month <= 12 && day >= 1 && day <= 31) << text;
  EXPECT_TRUE(hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60)
      << text;
  // Minutes and seconds have two digits; month, day and hour no leading zero.
  EXPECT_NE(text.find(fmt::format(",{},{:02},{:02}", hour, minute, second)), std::string::npos)
      << text;
}

TEST_F(Helpers, OriginCheck) {
  struct Row {
    Variant referer;
    Variant keyword;
    std::map<std::string, Variant> request;
    bool valid;
  };
  const Variant site = "http://oa.example/";
  const Row rows[] = {
      {"http://oa.example/x", site, {{"action", "ctrlSearch"}}, true},
      {" http://oa.example/x", site, {{"action", "ctrlSearch"}}, true},
      {"  http://oa.example/x", site, {{"action", "ctrlSearch"}}, false},
      {"HTTP://oa.example/x", site, {{"action", "ctrlSearch"}}, false},
      {"http://evil/?http://oa.example/", site, {{"action", "ctrlSearch"}}, false},
      {"http://evil/", site, {}, true},
      {"http://evil/", site, {{"action", "TarloLogin"}}, true},
      {"http://evil/", site, {{"action", "tarlologin"}}, false},
      {{}, site, {}, true},
      {{}, site, {{"action", "ctrlSearch"}}, false},
      {{}, site, {{"action", "ctrlSearch"}, {"K7WWworvane", "1"}}, true},
      {{}, site, {{"action", "ctrlSearch"}, {"k7wwworvane", "1"}, {"cmdid", "0"}}, false},
      {{}, site, {{"action", "ctrlSearch"}, {"k7wwworvane", "yes"}}, false},
      {{}, site, {{"action", "ctrlSearch"}, {"k7wwworvane", "2"}}, false},
      {"http://any/", {}, {{"action", "ctrlSearch"}}, true},
      {{}, {}, {{"action", "ctrlSearch"}}, false},
  };
  for (const Row& row : rows) {
    LocalPage local(databases_, "");
    local.serverVariables()["HTTP_REFERER"] = row.referer;
    local.application()["virtualWebKeyWord"] = row.keyword;
    for (const auto& [key, value] : row.request) local.request()[key] = value;
    EXPECT_EQ(isValidConnect(local.page()).boolean(), row.valid) << &row - rows;
    const std::string refusal = "<script>alert('无法识别的访问来源!请用\\n\\n" +
                                variant::spliced(row.keyword) +
                                "\\n\\n地址登录到本系统!');top.close();</script>"
                                "<p>非法请求，请用正常途径访问!";
    EXPECT_EQ(local.written(), row.valid ? "" : refusal) << &row - rows;
  }
}

}  // namespace
}  // namespace tarlo::frame
