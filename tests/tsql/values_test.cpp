// Values as texts hold them, types as declarations hold them, and literals as they are bound.

#include <gtest/gtest.h>

#include "tsql/error.h"
#include "tsql/print/sqlite_types.h"
#include "tsql/resolve/literal_value.h"
#include "tsql/translation.h"

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

TEST(SqliteTypes, EveryDeclarationReadsBackAsItsType) {
  Type sized = kTextType;
  sized.length = 200;
  for (const Type type : {kIntType, kFloatType, kTextType, sized, kDateType, decimalType(18, 2),
                          decimalType(19, 4), decimalType(5, 0)}) {
    EXPECT_EQ(typeOfDeclared(declaredType(type)), type) << declaredType(type);
  }
}

TEST(SqliteTypes, ForeignDeclarations) {
  const std::pair<std::string_view, Type> cases[] = {{"bigint unsigned", kIntType},
                                                     {"BOOLEAN", kIntType},
                                                     {"timestamp", kDateType},
                                                     {"decimal(10, 3)", decimalType(10, 3)},
                                                     {"numeric", kFloatType},
                                                     {"numeric(3,9)", kFloatType},
                                                     {"MONEY", decimalType(19, 4)},
                                                     {"double precision", kFloatType},
                                                     {"", kTextType},
                                                     {"BLOB", kTextType},
                                                     {"varchar(99999999999)", kTextType}};
  for (const auto& [declared, type] : cases) EXPECT_EQ(typeOfDeclared(declared), type) << declared;
}

// "i", "r" or "t" and the value; "refused" for a literal that does not convert.
std::string bound(ast::LiteralClass literalClass, std::string_view text, Type target) {
  try {
    const BoundValue value = convertLiteral(literalClass, text, {0, target, "C"});
    if (value.storage == BoundValue::Storage::Integer) return "i" + std::to_string(value.integer);
    if (value.storage == BoundValue::Storage::Real) return "r" + std::to_string(value.real);
    return "t" + (value.owned.empty() ? std::string(value.text) : value.owned);
  } catch (const StatementError& error) {
    EXPECT_EQ(error.refusal(), Refusal::Kind);
    return "refused";
  }
}

TEST(SqliteLiterals, ConvertAsTheirTargetSays) {
  using enum ast::LiteralClass;
  Type three = kTextType;
  three.length = 3;
  const std::tuple<ast::LiteralClass, const char*, Type, const char*> cases[] = {
      {Text, "", kIntType, "i0"},
      {Text, " 7 ", kIntType, "i7"},
      {Text, "5.5", kIntType, "refused"},
      {Decimal, "5.9", kIntType, "i5"},
      {Float, "1e30", kIntType, "refused"},
      {Integer, "0x1F", kIntType, "i31"},
      {Integer, "99999999999999999999", {}, "r100000000000000000000.000000"},
      {Text, "2.675", decimalType(18, 2), "r2.680000"},
      {Decimal, "9.995", decimalType(18, 2), "r10.000000"},
      {Text, "-0.5", decimalType(18, 0), "r-1.000000"},
      {Text, "1e2", decimalType(18, 2), "refused"},
      {Text, "1e2", kFloatType, "r100.000000"},
      {Text, "2024/1/5", kDateType, "t2024-01-05 00:00:00.000"},
      {Text, "2024-13-1", kDateType, "refused"},
      {Integer, "1", kDateType, "t1900-01-02 00:00:00.000"},
      {Integer, "99999999", kDateType, "refused"},
      {Text, "ab   ", three, "tab "},
      {Text, "   ", three, "t   "},
      {Text, "abcd", three, "refused"},
      {Integer, "007", three, "t7"},
      {Integer, "007", kTextType, "t7"},
      {Decimal, ".50", kTextType, "t0.50"},
      {Decimal, "00.5", kTextType, "t0.5"},
      {Decimal, "10.", kTextType, "t10"},
  };
  for (const auto& [literalClass, text, target, expected] : cases) {
    EXPECT_EQ(bound(literalClass, text, target), expected) << text;
  }
}

}  // namespace
}  // namespace tarlo::tsql
