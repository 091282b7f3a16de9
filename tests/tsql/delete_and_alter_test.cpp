// The two statements that not everybody has: DELETE, which is a word without a meaning unless it is
// known, and ALTER TABLE, which is a definition.

#include <gtest/gtest.h>

#include "fixture_catalogue.h"
#include "tsql/error.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"
#include "tsql/translation.h"

namespace tarlo::tsql::testing {
namespace {

// The engine's text, or the refusal.
std::string translated(std::string_view sql, TranslateOptions options) {
  FixtureCatalogue catalogue;
  try {
    return translate(sql, catalogue, options).steps.front().text;
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
  FixtureCatalogue catalogue;
  const Translation made = translate(
      "delete from region where ID in (select RegionID from Customer)", catalogue, kDeletes);
  ASSERT_EQ(made.touched.size(), 2u);
  EXPECT_EQ(made.touched[0].access, Access::Delete);
  EXPECT_EQ(made.touched[0].name, "Region");
  EXPECT_EQ(made.touched[1].access, Access::Read);
}

}  // namespace
}  // namespace tarlo::tsql::testing
