// The order of texts: the keys beside the collator that they come from, and what statements make of
// them on every engine.

#include "database/text_order.h"

#include <unicode/ucol.h>

#include "business.h"
#include "database/procedures.h"
#include "database/sqlite/functions.h"

namespace tarlo::database {
namespace {

int sign(int value) {
  return (value > 0) - (value < 0);
}

std::string keyOf(std::string_view text) {
  return std::string(SortKey(text).bytes());
}

class TextOrder : public ::testing::Test {
 protected:
  TextOrder() : collator_(ucol_open("zh-u-kr-latn-hani-ks-level2", &error_)) {}
  ~TextOrder() override { ucol_close(collator_); }

  // By comparing, which makes no key.
  int compared(std::string_view a, std::string_view b) {
    return ucol_strcollUTF8(collator_, a.data(), static_cast<int>(a.size()), b.data(),
                            static_cast<int>(b.size()), &error_);
  }
  void expectSame(const std::string& a, const std::string& b) {
    EXPECT_EQ(sign(keyOf(a).compare(keyOf(b))), compared(a, b)) << a << " beside " << b;
  }

  UErrorCode error_ = U_ZERO_ERROR;
  UCollator* collator_;
};

// Texts of one or two characters, ASCII and others, in all pairs: a character whose place depended
// on its neighbour would show.
TEST_F(TextOrder, KeysCompareAsTheCollatorDoes) {
  std::vector<std::string> characters{"\t", "é",  "Ä",  "ß",  "ö",  "β",
                                      "Я",  "啊", "重", "１", "ａ", "カ"};
  for (char c = '!'; c <= '~'; ++c) characters.emplace_back(1, c);
  for (const std::string& a : characters) {
    for (const std::string& b : characters) {
      expectSame(a, b);
      expectSame(a + b, b + a);
      expectSame(a + b, a);
      expectSame("x " + a, "x" + b);
    }
  }
  ASSERT_EQ(error_, U_ZERO_ERROR);
}

TEST_F(TextOrder, LongTextsCompareAsTheCollatorDoes) {
  const std::string letters(61, 'a');
  const std::vector<std::string> ends{"", "a", "B", "bb", "bbb", "bbbb", "1", "啊", "é", " x"};
  for (const std::string& a : ends) {
    for (const std::string& b : ends) {
      expectSame(letters + a, letters + b);
      expectSame(letters + letters + letters + letters + letters + a, letters + b);
      expectSame("长沙" + letters + letters + letters + a,
                 "长沙" + letters + letters + letters + b);
    }
  }
  ASSERT_EQ(error_, U_ZERO_ERROR);
}

TEST_F(TextOrder, TextsThatAreEqualHaveOneKey) {
  const std::pair<const char*, const char*> equal[] = {
      {"abc", "ＡＢｃ"}, {"", "  　"}, {"啊", "啊 　 "}, {"ſ", "S"},
      {"ｶ", "カ"},       {"ς", "Σ"},   {"￥", "¥"},
  };
  for (const auto& [a, b] : equal) EXPECT_EQ(keyOf(a), keyOf(b)) << a << " beside " << b;
  EXPECT_NE(keyOf("a b"), keyOf("ab"));
  EXPECT_NE(keyOf("a"), keyOf("ä"));
  // Bytes of another encoding are in some place, and the rest of the text counts.
  EXPECT_LT(keyOf("\xC4\xE3"
                  "a"),
            keyOf("\xC4\xE3"
                  "b"));
}

}  // namespace
}  // namespace tarlo::database

namespace tarlo::database::test {
namespace {

class Words : public Business {
 protected:
  Words() {
    lease_->execute("CREATE TABLE Word (ID int IDENTITY PRIMARY KEY, W nvarchar(20), G int)");
    lease_->execute(
        "INSERT INTO Word (W, G) VALUES ('长沙', 1), ('zoo', 1), ('啊', 1), ('12', 1), ('ABC', 1),"
        " ('_x', 1), ('上海', 1), ('abc', 1), ('１２', 2), ('重庆', 2), ('行', 2), ('北京', 2),"
        " ('北京A', 2), ('北京8', 2), ('A啊', 2), ('A1', 2), ('', 2), (NULL, 2)");
  }
};

TARLO_ON_EVERY_ENGINE(Words);

TEST_P(Words, DigitsThenLatinThenChineseByPinyin) {
  const std::string words =
      "NULL;;_x;12;１２;A1;ABC;abc;A啊;zoo;啊;北京;北京8;北京A;重庆;上海;行;长沙";
  expectRows({
      {"SELECT W FROM Word ORDER BY W", words},
      {"SELECT W AS x FROM Word ORDER BY x", words},
      {"SELECT W AS x FROM Word ORDER BY 1", words},
      {"SELECT W + '' FROM Word ORDER BY W + '', ID", words},
      {"SELECT W FROM Word WHERE W > 'zzz' ORDER BY W DESC",
       "长沙;行;上海;重庆;北京A;北京8;北京;啊"},
      {"SELECT W FROM Word WHERE G = 1 AND NOT W IN ('ABC') UNION SELECT 'm'",
       "_x;12;m;zoo;啊;上海;长沙"},
      {"SELECT 1, W FROM Word WHERE ID < 3 UNION ALL SELECT 2, 'b' ORDER BY 2 DESC",
       "1,长沙;1,zoo;2,b"},
      {"SELECT DISTINCT W FROM Word WHERE ID IN (1, 3, 7, 10, 11, 12)",
       "啊;北京;重庆;上海;行;长沙"},
      {"SELECT COUNT(*), MIN(G) FROM Word WHERE ID IN (1, 3, 4, 9) GROUP BY W", "2,1;1,1;1,1"},
      {"SELECT TOP 2 W FROM Word WHERE G = 2 AND W > '' ORDER BY W", "１２;A1"},
      {"SELECT d.x FROM (SELECT TOP 1 W AS x FROM Word ORDER BY W DESC) d", "长沙"},
  });
}

TEST_P(Words, ComparisonsAndExtremesFollowTheOrder) {
  expectRows({
      {"SELECT ID FROM Word WHERE W < '12'", "6;17"},
      {"SELECT ID FROM Word WHERE W <= '12' AND W > '_X '", "4;9"},
      {"SELECT ID FROM Word WHERE W BETWEEN '北京' AND '上海'", "7;10;12;13;14"},
      {"SELECT ID FROM Word WHERE NOT W >= 'b'", "4;5;6;8;9;15;16;17"},
      {"SELECT ID FROM Word WHERE W >= 'ABC' AND W <= 'abc '", "5;8"},
      {"SELECT a.ID FROM Word a, Word b WHERE b.ID = 10 AND a.W > b.W", "1;7;11"},
      {"SELECT MIN(W), MAX(W) FROM Word WHERE W > ''", "_x,长沙"},
      {"SELECT G, MAX(W), MIN(W) FROM Word WHERE W > '0' GROUP BY G", "1,长沙,12;2,行,１２"},
      {"SELECT G FROM Word GROUP BY G HAVING MAX(W) > '行'", "1"},
      {"SELECT G FROM Word GROUP BY G ORDER BY MAX(W) DESC", "1;2"},
      {"SELECT MIN(W), MAX(W) FROM Word WHERE W IS NULL", "NULL,NULL"},
      {"SELECT MAX(W) + 'x' FROM Word WHERE ID IN (2, 7)", "上海x"},
  });
}

// Rows without an order come by their key, which may be a text.
TEST_P(Words, KeysOfTextsAreInTheOrder) {
  executeAll(*lease_,
             {"CREATE TABLE Place (Name nvarchar(9) PRIMARY KEY)",
              "INSERT INTO Place (Name) VALUES ('上海'), ('北京'), ('a'), ('重庆'), ('B')"});
  expectRows({{"SELECT Name FROM Place", "a;B;北京;重庆;上海"},
              {"SELECT TOP 1 Name FROM Place ORDER BY LEN(Name) DESC", "北京"}});
}

}  // namespace
}  // namespace tarlo::database::test
