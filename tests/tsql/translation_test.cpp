// What the engine is given, as text: how parameters are numbered, which literals stay in the text,
// the step that returns an identity, and the two statements that not everybody has: DELETE, which
// is a word without a meaning unless it is known, and ALTER TABLE, which is a definition.

#include "tsql/translation.h"

#include <gtest/gtest.h>

#include "fixture_catalogue.h"
#include "tsql/error.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"

namespace tarlo::tsql::testing {
namespace {

Translation made(std::string_view sql, const TranslateOptions& options = {}) {
  FixtureCatalogue catalogue;
  return translate(sql, catalogue, options);
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
  // The parameters of the last step, and what is fixed.
  const std::tuple<const char*, const char*, const char*> cases[] = {
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
    const Step& step = translation.steps.at(translation.steps.size() - 1);
    EXPECT_EQ(ordinals(step), parameters) << sql;
    EXPECT_EQ(fixed(translation), fixedTexts) << sql;
    for (std::size_t i = 1; i <= step.parameters.size(); ++i) {
      EXPECT_NE(step.text.find("?" + std::to_string(i)), std::string::npos) << step.text;
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

// The engine's text, or the refusal.
std::string translated(std::string_view sql, const TranslateOptions& options) {
  try {
    return made(sql, options).steps.front().text;
  } catch (const StatementError& error) {
    return "refused: " + error.message();
  }
}

constexpr TranslateOptions kNothing = {};
constexpr TranslateOptions kDeletes = {Dialect::Sqlite, false, true};
constexpr TranslateOptions kDefines = {Dialect::Sqlite, true, false};

TEST(DeleteAndAlter, AreTranslatedForWhoeverHasThem) {
  const std::tuple<TranslateOptions, const char*, std::string> rows[] = {
      {kDeletes, "delete from Region where ID in (1,2) and Zembra_Flag<=3",
       "DELETE FROM \"Region\" AS t1 WHERE "},
      {kDeletes, "DELETE Region WHERE ID=1;", "DELETE FROM \"Region\" AS t1 WHERE "},
      {kDeletes, "delete from Region", "refused: expected WHERE, found the end"},
      {kDeletes, "delete from Nowhere where ID=1", "refused: unknown table Nowhere"},
      {kDeletes, "delete from Region where Nothing=1", "refused: unknown column Nothing"},
      {kDeletes, "delete from Region where ID=1 delete from Region where ID=2",
       "refused: expected the end of the statement"},
      {kDeletes, "insert into Region (Name) values ('x'); delete from Region where ID=1",
       "refused: expected the SELECT of the identity"},
      {kDeletes, "alter table Region add Area int", "refused: ALTER is not allowed here"},
      {kNothing, "delete from Region where ID=1", "refused: expected SELECT, INSERT, UPDATE"},
      {kNothing, "select 1 from Region delete from Region where ID=1", "refused: expected the end"},
      {kDefines, "delete from Region where ID=1", "refused: expected SELECT, INSERT, UPDATE"},
      {kDefines, "alter table Region add Area int default 7",
       "ALTER TABLE \"Region\" ADD COLUMN \"Area\" INTEGER DEFAULT (7)"},
      {kDefines, "alter table Region add Twice as ID",
       "ALTER TABLE \"Region\" ADD COLUMN \"Twice\" INTEGER GENERATED ALWAYS AS "},
      {kDefines, "alter table Region add name int", "refused: column name is there already"},
      {kDefines, "alter table Region add N int not null", "refused: column N needs a default"},
      {kDefines, "alter table Region add N int identity", "refused: a key cannot be added"},
      {kDefines, "alter table Nowhere add N int", "refused: unknown table Nowhere"},
      {kDefines, "alter table Region drop column Name", "refused: expected ADD"},
  };
  for (const auto& [options, sql, expected] : rows) {
    EXPECT_EQ(translated(sql, options).substr(0, expected.size()), expected) << sql;
  }
}

TEST(DeleteAndAlter, ArePrintedAsTheyWereRead) {
  for (const char* sql : {"DELETE FROM [Region] WHERE [ID] <= 5",
                          "ALTER TABLE [Region] ADD [Area] nvarchar(20) NOT NULL DEFAULT ('x')"}) {
    const std::string printed = printTsql(parse(sql, Deletes::Known));
    EXPECT_EQ(parse(printed, Deletes::Known), parse(sql, Deletes::Known)) << printed;
  }
}

TEST(DeleteAndAlter, ADeleteIsNotedAsOne) {
  const auto touched =
      made("delete from region where ID in (select RegionID from Customer)", kDeletes).touched;
  ASSERT_EQ(touched.size(), 2u);
  EXPECT_EQ(touched[0].access, Access::Delete);
  EXPECT_EQ(touched[0].name, "Region");
  EXPECT_EQ(touched[1].access, Access::Read);
}

}  // namespace
}  // namespace tarlo::tsql::testing
