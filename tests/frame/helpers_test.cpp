#include "frame/helpers.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>

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
  const std::regex form(R"(\d{4},[1-9]\d?,[1-9]\d?,(\d|1\d|2[0-3]),[0-5]\d,[0-5]\d)");
  EXPECT_TRUE(std::regex_match(local_.written(), form)) << local_.written();
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
