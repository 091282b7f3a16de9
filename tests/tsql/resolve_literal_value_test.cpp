#include <gtest/gtest.h>

#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql {
namespace {

TEST(LiteralValue, Dates) {
  const std::pair<const char*, const char*> rows[] = {
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
      {"9999-12-31", "9999-12-31 00:00:00.000"}};
  for (const auto& [text, date] : rows) EXPECT_EQ(parseDate(text), date) << text;
  for (const char* text :
       {"2023-2-29", "2024-4-31", "2024-13-1", "2024-0-1", "1752-12-31", "24-1-5", "2024-1/5",
        "2024-1", "2024", "202401051", "2024-1-5 24:00", "2024-1-5 9:60", "2024-1-5 9",
        "2024-1-5 9:08:07.1234", "2024-1-5x", "9:08 2024-1-5"}) {
    EXPECT_EQ(parseDate(text), std::nullopt) << text;
  }
}

TEST(LiteralValue, Numbers) {
  const auto readAs = [](std::string_view text) {
    return std::string(parseInteger(text) ? "integer " : "") +
           (parseNumber(text, Exponent::Refused) ? "decimal " : "") +
           (parseNumber(text) ? "float" : "");
  };
  for (const char* text : {"", " 12 ", "+5", "-5"}) {
    EXPECT_EQ(readAs(text), "integer decimal float") << text;
  }
  for (const char* text : {"5.5", ".5", "5.", "9223372036854775808"}) {
    EXPECT_EQ(readAs(text), "decimal float") << text;
  }
  EXPECT_EQ(readAs("1e3"), "float");
  for (const char* text : {"+-5", "-", ".", "1 2", "0x1F", "inf", "nan", "1e", "1e999", "1,000"}) {
    EXPECT_EQ(readAs(text), "") << text;
  }
  EXPECT_EQ(parseInteger(" -12 "), -12);
  EXPECT_EQ(parseNumber("+1.5e2"), 150.0);
}

}  // namespace
}  // namespace tarlo::tsql
