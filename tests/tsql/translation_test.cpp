// What the engine is given, as text: how parameters are numbered, which literals stay in the text,
// and the step that returns an identity.

#include "tsql/translation.h"

#include <gtest/gtest.h>

#include "fixture_catalogue.h"
#include "tsql/error.h"

namespace tarlo::tsql::testing {
namespace {

Translation made(std::string_view sql) {
  FixtureCatalogue catalogue;
  return translate(sql, catalogue);
}

// The ordinals of a step's parameters; the fixed literals as "ordinal=text".
std::string ordinals(const Step& step) {
  std::string all;
  for (const Parameter& parameter : step.parameters) all += std::to_string(parameter.ordinal) + ",";
  return all;
}
std::string fixed(const Translation& translation) {
  std::string all;
  for (const auto& [ordinal, text] : translation.fixed) {
    all += std::to_string(ordinal) + "=" + text + ",";
  }
  return all;
}

TEST(Translation, LiteralsBecomeParametersOrAreFixed) {
  const struct {
    const char* sql;
    const char* parameters;  // ordinals of the last step
    const char* fixed;
  } cases[] = {
      {"select ID from Orders where CustID=5 and Amount>'7'", "0,1,", ""},
      {"select top 3 ID from Orders where CustID=5", "1,", "0=3,"},
      {"select 'a' as 'title', 2 from Orders", "0,2,", "1=title,"},
      {"select cast(Amount as decimal(9,3)) from Orders where ID=1", "2,", "0=9,1=3,"},
      {"select cast(Amount as decimal(9,3)) from Orders", "", "0=9,1=3,"},
      {"select ID from Orders order by 1", "", "0=1,"},
      {"update Region set Name='x' where ID=1", "0,1,", ""},
      {"insert Region(Name) values('x'),('x')", "0,1,", ""},
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
  EXPECT_EQ(ordinals(insert.identityStep), "0,");
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

}  // namespace
}  // namespace tarlo::tsql::testing
