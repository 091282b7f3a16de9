// What the engine is given, as text: how parameters are numbered, which literals stay in the text,
// and the step that returns an identity.

#include "tsql/translation.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "fixture_catalogue.h"
#include "tsql/error.h"

namespace tarlo::tsql::testing {
namespace {

Translation made(std::string_view sql) {
  FixtureCatalogue catalogue;
  return translate(sql, catalogue);
}

std::string ordinals(const Step& step) {
  std::string all;
  for (const Parameter& parameter : step.parameters) {
    all += (all.empty() ? "" : ",") + std::to_string(parameter.ordinal);
  }
  return all;
}

std::string fixed(const Translation& translation) {
  std::string all;
  for (const auto& [ordinal, text] : translation.fixed) {
    all += (all.empty() ? "" : ",") + std::to_string(ordinal) + "=" + text;
  }
  return all;
}

TEST(Translation, LiteralsBecomeParametersOrAreFixed) {
  const struct {
    const char* sql;
    const char* parameters;  // ordinals of the last step
    const char* fixed;
  } cases[] = {
      {"select ID from Orders where CustID=5 and Amount>'7'", "0,1", ""},
      {"select top 3 ID from Orders where CustID=5", "1", "0=3"},
      {"select 'a' as 'title', 2 from Orders", "0,2", "1=title"},
      {"select cast(Amount as decimal(9,3)) from Orders where ID=1", "2", "0=9,1=3"},
      {"select ID from Orders order by 1", "", "0=1"},
      {"update Region set Name='x' where ID=1", "0,1", ""},
      {"insert Region(Name) values('x'),('x')", "0,1", ""},
  };
  for (const auto& [sql, parameters, fixedTexts] : cases) {
    const Translation translation = made(sql);
    ASSERT_FALSE(translation.steps.empty()) << sql;
    EXPECT_EQ(ordinals(translation.steps.back()), parameters) << sql;
    EXPECT_EQ(fixed(translation), fixedTexts) << sql;
    for (std::size_t i = 0; i < translation.steps.back().parameters.size(); ++i) {
      EXPECT_NE(translation.steps.back().text.find("?" + std::to_string(i + 1)), std::string::npos)
          << translation.steps.back().text;
    }
  }
}

TEST(Translation, AnInsertCanReturnItsIdentity) {
  const Translation insert = made("insert Region(Name) values('x')");
  EXPECT_EQ(insert.steps.size(), 1u);
  EXPECT_EQ(insert.identityStep.text, insert.steps[0].text + " RETURNING \"ID\"");
  EXPECT_EQ(insert.identityColumn, "ID");
  EXPECT_EQ(ordinals(insert.identityStep), "0");
  EXPECT_EQ(made("insert Zembra_Policy(Policy_Name) values('x')").identityStep.text, "");
  EXPECT_EQ(made("update Region set Name='x'").identityStep.text, "");
  EXPECT_EQ(made("insert Region(ID,Name) values(1,'x')").explicitIdentityOf, "Region");
}

TEST(Translation, TooManyLiteralsStayInTheText) {
  std::string list = "1";
  for (int i = 2; i <= 1001; ++i) list += "," + std::to_string(i);
  const std::string sql = "select ID from Orders where ID in (" + list + ")";
  const Translation many = made(sql);
  EXPECT_TRUE(many.steps[0].parameters.empty());
  EXPECT_EQ(many.fixed.size(), 1001u);
  EXPECT_EQ(many.steps[0].text.find('?'), std::string::npos);
  EXPECT_EQ(
      made("select ID from Orders where ID in (" + list.substr(2) + ")").steps[0].parameters.size(),
      1000u);
}

TEST(Translation, LiteralsConvertToWhatIsBound) {
  using ast::LiteralClass;
  Type code = kTextType;
  code.length = 3;
  const struct {
    LiteralClass literalClass;
    const char* text;
    Type target;
    const char* bound;  // "i", "r" or "t" and the value; "" when refused
  } cases[] = {
      {LiteralClass::Text, " 7 ", kIntType, "i7"},
      {LiteralClass::Text, "", kIntType, "i0"},
      {LiteralClass::Text, "7.5", kIntType, ""},
      {LiteralClass::Decimal, "7.9", kIntType, "i7"},
      {LiteralClass::Integer, "0x1F", kIntType, "i31"},
      {LiteralClass::Text, "2.675", decimalType(9, 2), "r2.68"},
      {LiteralClass::Text, "1e2", decimalType(9, 2), ""},
      {LiteralClass::Text, "1e2", kFloatType, "r100"},
      {LiteralClass::Text, "2024/1/5", kDateType, "t2024-01-05 00:00:00.000"},
      {LiteralClass::Integer, "1", kDateType, "t1900-01-02 00:00:00.000"},
      {LiteralClass::Text, "2024-2-30", kDateType, ""},
      {LiteralClass::Text, "abc   ", code, "tabc"},
      {LiteralClass::Text, "   ", code, "t   "},
      {LiteralClass::Text, "abcd", code, ""},
      {LiteralClass::Integer, "007", code, "t7"},
  };
  for (const auto& [literalClass, text, target, expected] : cases) {
    std::string bound;
    try {
      const BoundValue value = convertLiteral(literalClass, text, {0, target, "C"});
      if (value.storage == BoundValue::Storage::Integer)
        bound = "i" + std::to_string(value.integer);
      if (value.storage == BoundValue::Storage::Real) bound = fmt::format("r{}", value.real);
      if (value.storage == BoundValue::Storage::Text) {
        bound = "t" + (value.owned.empty() ? std::string(value.text) : value.owned);
      }
    } catch (const StatementError& error) {
      EXPECT_EQ(error.refusal(), Refusal::Kind);
    }
    EXPECT_EQ(bound, expected) << text;
  }
}

}  // namespace
}  // namespace tarlo::tsql::testing
