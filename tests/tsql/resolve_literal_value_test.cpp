#include <gtest/gtest.h>

#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql {
namespace {

TEST(LiteralValue, datesAreInTheOneFormOrNone) {
  EXPECT_EQ(parseDate(" 2024.3.5T9:8:7.5 "), "2024-03-05 09:08:07.500");
  EXPECT_EQ(parseDate(""), "1900-01-01 00:00:00.000");
  EXPECT_EQ(parseDate("1752-12-31"), std::nullopt);
}

TEST(LiteralValue, numbers) {
  const struct {
    const char* text;
    bool integer, decimal, floating;
  } rows[] = {
      {"", true, true, true},
      {" 12 ", true, true, true},
      {"+5", true, true, true},
      {"-5", true, true, true},
      {"5.5", false, true, true},
      {".5", false, true, true},
      {"5.", false, true, true},
      {"1e3", false, false, true},
      {"+-5", false, false, false},
      {"-", false, false, false},
      {".", false, false, false},
      {"1 2", false, false, false},
      {"0x1F", false, false, false},
      {"inf", false, false, false},
      {"nan", false, false, false},
      {"1e", false, false, false},
      {"1e999", false, false, false},
      {"1,000", false, false, false},
      {"9223372036854775808", false, true, true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(parseInteger(row.text).has_value(), row.integer) << row.text;
    EXPECT_EQ(parseNumber(row.text, Exponent::Refused).has_value(), row.decimal) << row.text;
    EXPECT_EQ(parseNumber(row.text).has_value(), row.floating) << row.text;
  }
  EXPECT_EQ(parseInteger(" -12 "), -12);
  EXPECT_EQ(parseNumber("+1.5e2"), 150.0);
}

}  // namespace
}  // namespace tarlo::tsql
