// OFFSET and FETCH: what is read, what is refused, and that all pages of a list share one
// translation.

#include <gtest/gtest.h>

#include "resolve_support.h"
#include "tsql/print/tsql_printer.h"
#include "tsql/translation.h"

namespace tarlo::tsql::testing {
namespace {

TEST(Paging, IsReadInEverySpelling) {
  const struct {
    const char* sql;
    const char* printed;
  } rows[] = {
      {"select ID from Orders order by ID offset 30 rows fetch next 15 rows only",
       "SELECT [ID] FROM [Orders] ORDER BY [ID] OFFSET 30 ROWS FETCH NEXT 15 ROWS ONLY"},
      {"select ID from Orders order by ID desc OFFSET 0 ROW FETCH FIRST 1 ROW ONLY",
       "SELECT [ID] FROM [Orders] ORDER BY [ID] DESC OFFSET 0 ROWS FETCH NEXT 1 ROWS ONLY"},
      {"select 1 from (select ID from Orders union select ID from Customer order by 1 offset 2 "
       "rows) d",
       "SELECT 1 FROM (SELECT [ID] FROM [Orders] UNION SELECT [ID] FROM [Customer] ORDER BY 1 "
       "OFFSET 2 ROWS) AS [d]"},
      {"select offset from T order by offset", "SELECT [offset] FROM [T] ORDER BY [offset]"},
  };
  for (const auto& row : rows) EXPECT_EQ(printTsql(parse(row.sql)), row.printed);
}

TEST(Paging, RefusesWhatIsNoPage) {
  const struct {
    const char* sql;
    const char* message;
  } rows[] = {
      {"select ID from Orders offset 1 rows", "found"},
      {"select ID from Orders order by ID offset -1 rows", "expected a number of rows"},
      {"select ID from Orders order by ID offset 1.5 rows", "expected a number of rows"},
      {"select ID from Orders order by ID offset ID rows", "expected a number of rows"},
      {"select ID from Orders order by ID offset 1", "expected ROWS"},
      {"select ID from Orders order by ID fetch next 1 rows only", "found"},
      {"select ID from Orders order by ID offset 1 rows fetch 1 rows only", "expected NEXT"},
      {"select ID from Orders order by ID offset 1 rows fetch next 1 rows", "expected ONLY"},
      {"select top 3 ID from Orders order by ID offset 1 rows", "OFFSET cannot stand with TOP"},
      {"select ID from Orders order by ID offset 99999999999999999999 rows", "whole numbers"},
  };
  for (const auto& row : rows) {
    const std::string outcome = [&]() -> std::string {
      try {
        return outcomeOf(row.sql);
      } catch (const StatementError& error) {
        return error.message();
      }
    }();
    EXPECT_NE(outcome.find(row.message), std::string::npos) << row.sql << "\n" << outcome;
  }
}

TEST(Paging, CountsAreParametersOfOneTranslation) {
  FixtureCatalogue catalogue;
  const Translation translation = translate(
      "select ID from Orders order by Amount offset 30 rows fetch next 15 rows only", catalogue);
  EXPECT_TRUE(translation.fixed.empty());
  const Step& step = translation.steps.at(0);
  EXPECT_EQ(step.parameters.size(), 2u);
  EXPECT_NE(step.text.find("LIMIT ?"), std::string::npos) << step.text;
  EXPECT_NE(step.text.find(R"(t1."Amount", t1."ID" LIMIT)"), std::string::npos)
      << "ties: " << step.text;
}

}  // namespace
}  // namespace tarlo::tsql::testing
