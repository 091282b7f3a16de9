#include "text/pieces.h"

#include <gtest/gtest.h>

#include "text/csv.h"
#include "text/fold.h"
#include "text/sql_text.h"
#include "text/utf8.h"

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

TEST(SqlText, KeepsAValueInsideItsLiteral) {
  EXPECT_EQ(sqlText("a'b''"), "N'a''b'''''");
  EXPECT_EQ(sqlText(""), "N''");
}

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

TEST(Utf8, BoundsAreReadAndWritten) {
  const std::pair<char32_t, std::string_view> rows[] = {{0, std::string_view("\0", 1)},
                                                        {0x7F, "\x7F"},
                                                        {0x80, "\xC2\x80"},
                                                        {0x7FF, "\xDF\xBF"},
                                                        {0x800, "\xE0\xA0\x80"},
                                                        {0xD7FF, "\xED\x9F\xBF"},
                                                        {0xE000, "\xEE\x80\x80"},
                                                        {0xFFFF, "\xEF\xBF\xBF"},
                                                        {0x10000, "\xF0\x90\x80\x80"},
                                                        {0x10FFFF, "\xF4\x8F\xBF\xBF"}};
  for (const auto& [point, bytes] : rows) {
    std::string written;
    appendUtf8(written, point);
    EXPECT_EQ(written, bytes);
    const Character character = characterAt(written + "\x80");
    EXPECT_EQ(character.point, point);
    EXPECT_EQ(character.length, bytes.size());
  }
}

TEST(Utf8, WhatIsNoCharacterIsTakenByteByByte) {
  for (const std::string_view bytes :
       {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC2", "\xC2 ", "\xE0\x9F\xBF", "\xE4\xB8",
        "\xE4\xB8 ", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF0\x9F\x98",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
    const Character character = characterAt(bytes);
    EXPECT_EQ(character.length, 0u);
    EXPECT_EQ(character.point, static_cast<unsigned char>(bytes[0]));
    std::string_view rest = bytes;
    EXPECT_EQ(takeCodePoint(rest), 0xFFFDu);
    EXPECT_EQ(rest.size(), bytes.size() - 1);
    EXPECT_EQ(firstInvalidByte(std::string("select 中 ").append(bytes)), 11u);
  }
}

// Eight bytes go by at once, so a byte that is none of them is put in each place of a step.
TEST(Utf8, TheFirstBadByteIsFoundBehindStepsOfEight) {
  const std::string plain(19, 'a');
  EXPECT_EQ(firstInvalidByte(plain), std::string_view::npos);
  for (std::size_t at = 0; at < plain.size(); ++at) {
    for (const char bad : {'\0', '\x80', '\xFF'}) {
      std::string text = plain;
      text[at] = bad;
      EXPECT_EQ(firstInvalidByte(text), at);
      EXPECT_EQ(utf16Length(text), plain.size());
    }
  }
}

TEST(Utf8, CutsFallBetweenCharacters) {
  constexpr std::string_view kText = "a中😀";
  EXPECT_EQ(utf8Prefix(kText, 0), "");
  EXPECT_EQ(utf8Prefix(kText, 2), "a中");
  EXPECT_EQ(utf8Prefix(kText, 9), kText);
  const std::string_view cuts[] = {"", "a", "a", "a", "a中", "a中", "a中", "a中", kText, kText};
  for (std::size_t i = 0; i < std::size(cuts); ++i) EXPECT_EQ(wholeCharacters(kText, i), cuts[i]);
  EXPECT_EQ(wholeCharacters("\x80\x80\x80", 2), "");
}

TEST(Utf8, UnitsAreThoseOfUtf16) {
  const std::pair<std::string_view, std::size_t> rows[] = {
      {"", 0},
      {"abc", 3},
      {"中文", 2},
      {"😀", 2},
      {"select * 中文😀b", 14},
      {"\xD6\xD0", 2},
      {"\xED\xA0\x80", 3} /* a surrogate is no character */,
      {"\xF0\x9F", 2},
      {"\xF4\x90\x80\x80", 4},
      {kReplacement, 1}};
  for (const auto& [text, units] : rows) EXPECT_EQ(utf16Length(text), units) << text;
  const Utf16Cut inside = utf16Cut("12345678😀", 9);
  EXPECT_EQ(inside.before, 8u);
  EXPECT_EQ(inside.after, 12u);
  EXPECT_EQ(inside.units, 10u);
}

}  // namespace
}  // namespace tarlo::text
