#include "text/csv.h"

#include <gtest/gtest.h>

namespace tarlo::text {
namespace {

TEST(Csv, AFormulaIsKnownBehindAnyBlanks) {
  for (const char* text :
       {"=1", "+1", "-1", "@a", "＝1", "＋1", "－1", "＠a", " =1", "\t=1", "\r\n=1", "\xC2\xA0=1",
        "\xE3\x80\x80＝1", " \t \xE3\x80\x80\xC2\xA0@a", "\tx", "\rx"}) {
    EXPECT_TRUE(looksLikeFormula(text)) << text;
  }
  for (const char* text : {"", " ", "a=1", "1-2", " a", "\nx", "（=1）", "\xC2", "\xE3\x80"}) {
    EXPECT_FALSE(looksLikeFormula(text)) << text;
  }
}

TEST(Csv, FieldsAreQuotedWhereTheyMustBe) {
  const std::pair<const char*, const char*> rows[] = {{"", ""},
                                                      {"a b", "a b"},
                                                      {"a,b", "\"a,b\""},
                                                      {"a\"b", "\"a\"\"b\""},
                                                      {"a\r\nb", "\"a\r\nb\""},
                                                      {"'=1", "'=1"}};
  for (const auto& [text, quoted] : rows) EXPECT_EQ(csvQuoted(text), quoted);
  EXPECT_EQ(csvInQuotes(""), "\"\"");
  EXPECT_EQ(csvRecord({"a", "", csvQuoted("b,c")}), "a,,\"b,c\"\r\n");
  EXPECT_EQ(csvRecord({}), "\r\n");
}

}  // namespace
}  // namespace tarlo::text
