#include <gtest/gtest.h>

#include <sstream>

#include "app/json_value.h"
#include "app/nearest.h"
#include "app/refusal.h"
#include "app/rows_output.h"
#include "app/statement_diff.h"
#include "app/table.h"
#include "compile/statement_parts.h"
#include "text/display_width.h"
#include "variant/array.h"

namespace tarlo::app {
namespace {

TEST(DisplayWidth, ShowsWhatWouldHideOrMoveTheCursor) {
  const std::tuple<std::string_view, std::string_view, std::size_t> rows[] = {
      {"abc", "abc", 3},
      {"客户a", "客户a", 5},
      {"Ａ，", "Ａ，", 4},
      {"e\xCC\x81", "e\xCC\x81", 1},
      {"é", "é", 1},
      {"😀", "😀", 2},
      {"a\nb\r\tc", "a\\nb\\r\\tc", 9},
      {std::string_view("a\0b", 3), "a\\u{0}b", 7},
      {"\x1b[31m", "\\u{1b}[31m", 10},
      {"a\xE2\x80\xAE", "a\\u{202e}", 9},
      {"\xFFx", "\\xffx", 5},
      {"\xE5\xAE", "\\xe5\\xae", 8},            // cut off
      {"\xC0\xAF", "\\xc0\\xaf", 8},            // longer than it need be
      {"\xED\xA0\x80", "\\xed\\xa0\\x80", 12},  // half of a pair
      {"\xF5\x80\x80\x80", "\\xf5\\x80\\x80\\x80", 16},
  };
  for (const auto& [text, shown, width] : rows) {
    EXPECT_EQ(text::visible(text), shown);
    EXPECT_EQ(text::displayWidth(text::visible(text)), width) << shown;
  }
}

TEST(TableTest, AlignsByColumnsOnTheScreen) {
  std::ostringstream out;
  Table table(out, {"名称", "n"});
  table.add({{"ab", false}, {"5", true}});
  table.add({{"客户名", false}, {"1000", true}});
  table.finish();
  EXPECT_EQ(out.str(), "名称       n\n------  ----\nab         5\n客户名  1000\n");
}

TEST(TableTest, KeepsToItsWidth) {
  std::ostringstream out;
  Table table(out, {"名称", "n", "left out"}, 13);
  table.add({{"客户名称", false}, {"5", true}, {"x", false}});
  table.finish();
  EXPECT_EQ(out.str(), "名称      n\n--------  -\n客户名称  5\n");
  EXPECT_EQ(table.columnsShown(), 2u);
  EXPECT_EQ(text::cutTo("客户名称", 8), "客户名称");
  EXPECT_EQ(text::cutTo("客户名称", 6), "客户…");
}

TEST(TableTest, WritesRowsAsTheyComeOnceItHasMeasured) {
  std::ostringstream out;
  Table table(out, {"a", "b"});
  for (std::size_t i = 0; i + 1 < kMeasuredRows; ++i) table.add({{"x", false}, {"y", false}});
  EXPECT_EQ(out.str(), "");
  table.add({{"x", false}, {"y", false}});
  const std::size_t before = out.str().size();
  EXPECT_GT(before, 0u);
  table.add({{"longer", false}, {"y", false}});
  EXPECT_EQ(out.str().substr(before), "longer  y\n");
  table.finish();
}

TEST(CsvTest, QuotesWhatNeedsItAndTellsNullFromNothing) {
  const std::pair<Variant, const char*> rows[] = {
      {"plain", "plain"},
      {"a,b", "\"a,b\""},
      {"say \"x\"", "\"say \"\"x\"\"\""},
      {"a\r\nb", "\"a\r\nb\""},
      {"", "\"\""},
      {variant::Null{}, ""},
      {std::int32_t{-5}, "-5"},
      {variant::Decimal{"10.5"}, "10.5"},
  };
  for (const auto& [value, field] : rows) EXPECT_EQ(csvField(value), field);
}

TEST(JsonValue, KeepsTheStatesApartBothWays) {
  // Argument, what it becomes, how it is printed.
  using variant::State;
  const std::tuple<const char*, variant::State, const char*> rows[] = {
      {"5", State::Text, "\"5\""},
      {"", State::Text, "\"\""},
      {"json:", State::Empty, "{}"},
      {"json:{}", State::Empty, "{}"},
      {"json:null", State::Null, "null"},
      {"json:true", State::Boolean, "true"},
      {"json:5", State::Int32, "5"},
      {"json:-2147483649", State::Int64, "-2147483649"},
      {"json:18446744073709551615", State::Double, "1.8446744073709552e+19"},
      {"json:1.5", State::Double, "1.5"},
      {"json:\"json:5\"", State::Text, "\"json:5\""},
      {"json:\"\\u0000\"", State::Text, "\"\\u0000\""},
      {"json:[1,\"a\",null]", State::Array, "[1,\"a\",null]"},
      {"json:[[1,2,3],[4,5,6]]", State::Array, "[[1,2,3],[4,5,6]]"},
      {"json:[]", State::Array, "[]"},
      {"\xFF", State::Text, "\"\xEF\xBF\xBD\""},
  };
  for (const auto& [argument, state, printed] : rows) {
    const Variant value = parseArgument(argument);
    EXPECT_EQ(value.state(), state) << argument;
    EXPECT_EQ(jsonText(toJson(value)), printed) << argument;
  }
  for (const char* wrong : {"json:{\"a\":1}", "json:abc", "json:[1", "json:5 6"})
    EXPECT_THROW(parseArgument(wrong), ArgumentError) << wrong;
}

TEST(JsonValue, ATableOfRowsIsAListOfColumns) {
  Array table({1, 2});
  table.at(0, 2) = "last row, first column";
  EXPECT_EQ(jsonText(toJson(table)), "[[{},{},\"last row, first column\"],[{},{},{}]]");
  EXPECT_EQ(parseArgument("json:[[1,2,3],[4,5,6]]").array().rank(), 2u);
}

TEST(JsonValue, ADecimalIsANumberOnlyWhereThatIsExact) {
  const std::pair<const char*, const char*> rows[] = {
      {"1000", "1000"},
      {"-0.5", "-0.5"},
      {"1234.56", "1234.56"},
      {"9223372036854775808", "\"9223372036854775808\""},
      {"0.12345678901234567891", "\"0.12345678901234567891\""},
  };
  for (const auto& [digits, printed] : rows)
    EXPECT_EQ(jsonText(toJson(variant::Decimal{digits})), printed);
}

TEST(NearestName, FindsSlipsAndNothingElse) {
  const std::string_view names[] = {"init", "call", "compile", "operations"};
  EXPECT_EQ(nearestName("comple", names), "compile");
  EXPECT_EQ(nearestName("OPERATION", names), "operations");
  EXPECT_EQ(nearestName("frobnicate", names), "");
  EXPECT_EQ(nearestName("", names), "");
  EXPECT_EQ(nearestName(std::string(5000, 'a'), names), "");
}

TEST(RefusalTest, ReadsThePositionOffTheFront) {
  const auto refusal = parseRefusal("line 2, column 13: There is no table T.");
  ASSERT_TRUE(refusal);
  EXPECT_EQ(refusal->line, 2u);
  EXPECT_EQ(refusal->column, 13u);
  EXPECT_EQ(refusal->message, "There is no table T.");
  for (const char* plain : {"", "line ", "line 2: x", "line 2, column : x", "Line 1, column 1: x"})
    EXPECT_FALSE(parseRefusal(plain)) << plain;
}

TEST(StatementDiffTest, PartsAtClausesOutsideBracketsAndQuotes) {
  const auto clauses = compile::splitStatement(
      "select ISNULL([a,b].[from],'x, where') as [and],[c] from [T],U where [a]=1 and [b] in "
      "(select x from y where p and q) group by [c],[d]");
  ASSERT_EQ(clauses.size(), 4u);
  using Items = std::vector<std::string>;
  EXPECT_EQ(clauses[0].items, (Items{"ISNULL([a,b].[from],'x, where') as [and]", "[c]"}));
  EXPECT_EQ(clauses[1].items, (Items{"[T]", "U"}));
  EXPECT_EQ(clauses[2].items, (Items{"[a]=1", "[b] in (select x from y where p and q)"}));
  EXPECT_EQ(clauses[3].items, (Items{"[c]", "[d]"}));
}

TEST(StatementParts, LaysOutWithoutChangingTheStatement) {
  EXPECT_EQ(compile::laidOut("select [a],[b],[c] from [T],U where [a]=1 and [b]=2", 15),
            "select [a],\n  [b], [c]\nfrom [T], U\nwhere [a]=1 and\n  [b]=2\n");
  // What cannot be put together again stays as it is.
  EXPECT_EQ(compile::laidOut("select ,a FROM T", 5), "select ,a FROM T\n");
}

TEST(StatementDiffTest, ComparesVeryLongClausesByCount) {
  std::string before = "select 0", after = "select 1";
  for (int i = 2; i < 2000; ++i) {
    before += "," + std::to_string(i);
    after += "," + std::to_string(i);
  }
  const StatementDiff diff = diffStatements(before, after);
  EXPECT_EQ(summaryOf(diff), "1 item gone, 1 new");
  EXPECT_EQ(diff.lines.size(), 1u);
}

TEST(StatementDiffTest, SaysWhatIsGoneAndWhatIsNew) {
  const std::tuple<const char*, const char*, std::vector<std::string>> rows[] = {
      {"select a,b from T", "select a,b from T", {}},
      {"select a,b,c from T", "select a,c,d from T", {"select", "  - b", "  + d"}},
      {"select a,b from T", "select b,a from T", {"select", "  - a", "  + a"}},
      {"select a from T where x=1", "select a from T", {"where", "  - x=1"}},
      {"select a from T", "select a from T group by a", {"group by", "  + a"}},
      {"select [a from", "select 'a", {"select", "  - [a from", "  + 'a"}},
      {"", "select a", {"select", "  + a"}},
      {"))x,(", "y", {"text", "  - ))x,(", "  + y"}},
  };
  for (const auto& [before, after, lines] : rows)
    EXPECT_EQ(diffStatements(before, after).lines, lines);
  EXPECT_EQ(summaryOf(diffStatements("select a,b", "select c")), "2 items gone, 1 new");
  EXPECT_EQ(summaryOf(diffStatements("select  a", "SELECT a")),
            "only blanks or the case of words differ");
}

}  // namespace
}  // namespace tarlo::app
