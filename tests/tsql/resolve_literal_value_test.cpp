#include <gtest/gtest.h>

#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql {
namespace {

TEST(LiteralValue, dates) {
  const struct {
    const char* text;
    const char* canonical;  // "" where it is none
  } rows[] = {
      {"2024-1-5", "2024-01-05 00:00:00.000"},
      {"20240105", "2024-01-05 00:00:00.000"},
      {"2024/1/5", "2024-01-05 00:00:00.000"},
      {" 2024-3-5  9:08:07 ", "2024-03-05 09:08:07.000"},
      {"2024-03-05T09:08:07.5", "2024-03-05 09:08:07.500"},
      {"20240305 23:59:59.999", "2024-03-05 23:59:59.999"},
      {"9:08", "1900-01-01 09:08:00.000"},
      {"", "1900-01-01 00:00:00.000"},
      {"  ", "1900-01-01 00:00:00.000"},
      {"2024-2-29", "2024-02-29 00:00:00.000"},
      {"1753-1-1", "1753-01-01 00:00:00.000"},
      {"9999-12-31", "9999-12-31 00:00:00.000"},
      {"2023-2-29", ""},
      {"2024-4-31", ""},
      {"2024-13-1", ""},
      {"2024-0-1", ""},
      {"1752-12-31", ""},
      {"24-1-5", ""},
      {"2024-1/5", ""},
      {"2024-1", ""},
      {"2024", ""},
      {"202401051", ""},
      {"2024-1-5 24:00", ""},
      {"2024-1-5 9:60", ""},
      {"2024-1-5 9", ""},
      {"2024-1-5 9:08:07.1234", ""},
      {"2024-1-5x", ""},
      {"9:08 2024-1-5", ""},
  };
  for (const auto& row : rows)
    EXPECT_EQ(parseDate(row.text).value_or(""), row.canonical) << row.text;
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
