#include "variant/convert.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/errors.h"
#include "variant/array.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

using testing::errorOf;

TEST(ToText, DoublesHaveNoExponentAndNoTrailingZeros) {
  const std::pair<double, std::string> rows[] = {
      {0.0, "0"},
      {-0.0, "0"},
      {0.5, "0.5"},
      {-0.5, "-0.5"},
      {0.1 + 0.2, "0.3"},
      {100, "100"},
      {1234567.891, "1234567.891"},
      {1e15, "1000000000000000"},
      {1.5e20, "150000000000000000000"},
      {1.25e-7, "0.000000125"},
      {999999999999999.9, "1000000000000000"},
      {2.0 / 3, "0.666666666666667"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(toText(value), text);
  EXPECT_EQ(errorOf([] { toText(std::numeric_limits<double>::infinity()); }), 6);
}

TEST(ToText, OtherStates) {
  EXPECT_EQ(toText({}), "");
  EXPECT_EQ(toText(true), "True");
  EXPECT_EQ(toText(false), "False");
  EXPECT_EQ(toText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(toText(Decimal{"-12.340"}), "-12.340");
  EXPECT_EQ(spliced(Null{}), "");
  EXPECT_EQ(errorOf([] { toText(Null{}); }), 94);
  EXPECT_EQ(errorOf([] { toText(Array({1})); }), 13);
  EXPECT_EQ(errorOf([] { spliced(std::shared_ptr<Object>()); }), 13);
}

TEST(Dates, TextRoundsToTheSecondAndBeforeDayZeroTimeRunsForward) {
  const std::pair<double, std::string> rows[] = {
      {0, "1899-12-30 00:00:00"},
      {0.5, "1899-12-30 12:00:00"},
      {-1.25, "1899-12-29 06:00:00"},
      {37264, "2002-01-08 00:00:00"},
      {37264 + 0.6 / 86400, "2002-01-08 00:00:01"},
      {37264 - 0.4 / 86400, "2002-01-08 00:00:00"},
      {-1 - 86399.6 / 86400, "1899-12-30 00:00:00"},
  };
  for (const auto& [days, text] : rows) EXPECT_EQ(toText(Date{days}), text) << days;
  EXPECT_EQ(errorOf([] { toText(Date{3e9}); }), 6);
}

TEST(Dates, TextOfAForm) {
  EXPECT_EQ(toText(toDate(" 20020108 09:05:33.5 ")), "2002-01-08 09:05:34");
  for (const char* text : {"", "2001-02-29", "9:05", "2002.1.8"}) {
    EXPECT_EQ(errorOf([&] { toDate(text); }), 13) << text;
  }
}

TEST(Dates, CalendarAndBackKeepsMilliseconds) {
  for (const CalendarTime time :
       {CalendarTime{2002, 1, 8, 9, 5, 33, 997}, CalendarTime{1, 1, 1, 0, 0, 0, 1},
        CalendarTime{9999, 12, 31, 23, 59, 59, 999}}) {
    const CalendarTime back = calendarOf(dateOf(time));
    EXPECT_EQ(back.year, time.year);
    EXPECT_EQ(back.day, time.day);
    EXPECT_EQ(back.second, time.second);
    EXPECT_EQ(back.millisecond, time.millisecond);
  }
  EXPECT_EQ(errorOf([] { dateOf({2002, 2, 30}); }), 5);
  EXPECT_EQ(errorOf([] { dateOf({2002, 2, 3, 24}); }), 5);
}

TEST(Numbers, TextAsNumber) {
  const std::pair<const char*, double> good[] = {
      {"12", 12},    {" -1.5 ", -1.5},  {"1e3", 1000},  {".5", 0.5},  {"5.", 5},
      {"+7", 7},     {"&H1F", 31},      {"&hFFFF", -1}, {"1d2", 100}, {"0e999999999999", 0},
      {"1e-400", 0}, {"&H10000", 65536}};
  for (const auto& [text, value] : good) {
    EXPECT_EQ(toDouble(text), value) << text;
    EXPECT_TRUE(isNumeric(text)) << text;
  }
  for (const char* text : {"", " ", ".", "-", "1,000", "1e", "1e+", "abc", "1 2", "--1", "&H",
                           "&HG", "&H123456789", "inf", "nan", "0x10", "１", "True"}) {
    EXPECT_EQ(errorOf([&] { toDouble(text); }), 13) << text;
    EXPECT_FALSE(isNumeric(text)) << text;
  }
  EXPECT_EQ(errorOf([] { toDouble("1e309"); }), 6);
  EXPECT_FALSE(isNumeric("1e309"));
  EXPECT_FALSE(isNumeric("-9e308"));
  EXPECT_TRUE(isNumeric("1.7e308"));
}

TEST(Numbers, IntegersRoundHalfToEvenAndOverflow) {
  const std::pair<Variant, std::int64_t> rows[] = {
      {0.5, 0},    {1.5, 2},       {-2.5, -2},
      {"2.5", 2},  {"2.50001", 3}, {"-3.5", -4},
      {true, -1},  {{}, 0},        {Decimal{"0.5"}, 0},
      {"0.05", 0}, {"25e-1", 2},   {Decimal{"9007199254740993.5"}, 9007199254740994}};
  for (const auto& [value, expected] : rows) EXPECT_EQ(toInt64(value), expected);
  EXPECT_EQ(toInt16("32767.4"), 32767);
  EXPECT_EQ(toInt64("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(errorOf([] { toInt16("40000"); }), 6);
  EXPECT_EQ(errorOf([] { toInt16(32767.5); }), 6);
  EXPECT_EQ(errorOf([] { toInt32(2147483648.0); }), 6);
  EXPECT_EQ(errorOf([] { toInt64("9223372036854775808"); }), 6);
  EXPECT_EQ(errorOf([] { toInt64(std::numeric_limits<double>::quiet_NaN()); }), 6);
  EXPECT_EQ(errorOf([] { toInt32(Null{}); }), 94);
}

TEST(Numbers, BooleansAndStatesThatAreNotNumeric) {
  EXPECT_TRUE(toBoolean(" TRUE "));
  EXPECT_FALSE(toBoolean("false"));
  EXPECT_TRUE(toBoolean("0.1"));
  EXPECT_FALSE(toBoolean({}));
  EXPECT_EQ(errorOf([] { toBoolean("yes"); }), 13);
  EXPECT_TRUE(isNumeric({}));
  EXPECT_TRUE(isNumeric(true));
  EXPECT_FALSE(isNumeric(Null{}));
  EXPECT_FALSE(isNumeric(Date{1}));
  EXPECT_FALSE(isNumeric(Array({0})));
}

}  // namespace
}  // namespace tarlo::variant
