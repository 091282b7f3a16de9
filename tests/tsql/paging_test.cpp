// OFFSET and FETCH: what is read, what is refused, and that all pages of a list share one
// translation.

#include <gtest/gtest.h>

#include "resolve_support.h"
#include "tsql/print/tsql_printer.h"
#include "tsql/translation.h"

namespace tarlo::tsql::testing {
namespace {

TEST(Paging, IsReadInEverySpelling) {
  const std::pair<const char*, const char*> rows[] = {
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
  for (const auto& [sql, printed] : rows) EXPECT_EQ(printTsql(parse(sql)), printed);
}

TEST(Paging, RefusesWhatIsNoPage) {
  const std::pair<std::string, const char*> rows[] = {
      {"ID from Orders offset 1 rows", "expected the end of the statement, found '1'"},
      {"ID from Orders order by ID offset -1 rows", "expected a number of rows"},
      {"ID from Orders order by ID offset 1.5 rows", "expected a number of rows"},
      {"ID from Orders order by ID offset ID rows", "expected a number of rows"},
      {"ID from Orders order by ID offset 1", "expected ROWS"},
      {"ID from Orders order by ID fetch next 1 rows only",
       "expected the end of the statement, found 'fetch'"},
      {"ID from Orders order by ID offset 1 rows fetch 1 rows only", "expected NEXT"},
      {"ID from Orders order by ID offset 1 rows fetch next 1 rows", "expected ONLY"},
      {"top 3 ID from Orders order by ID offset 1 rows", "OFFSET cannot stand with TOP"},
      {"ID from Orders order by ID offset 99999999999999999999 rows", "paging needs whole numbers"},
  };
  for (const auto& [clause, message] : rows) {
    const std::string outcome = outcomeOf("select " + clause);
    EXPECT_TRUE(outcome.starts_with(message)) << clause << "\n" << outcome;
  }
}

TEST(Paging, CountsAreParametersOfOneTranslation) {
  FixtureCatalogue catalogue;
  const Translation translation = translate(
      "select ID from Orders order by Amount offset 30 rows fetch next 15 rows only", catalogue);
  EXPECT_TRUE(translation.fixed.empty());
  const Step& step = translation.steps.at(0);
  EXPECT_EQ(step.parameters.size(), 2u);
  // Ties come in the order of the key, in a derived table as well.
  EXPECT_TRUE(step.text.ends_with(R"( ORDER BY t1."Amount", t1."ID" LIMIT ?2 OFFSET ?1)"))
      << step.text;
  const std::string inner =
      translate("select 1 from (select ID from Orders order by Amount offset 3 rows) d", catalogue)
          .steps.at(0)
          .text;
  EXPECT_NE(inner.find(R"( ORDER BY t1."Amount", t1."ID" LIMIT -1 OFFSET ?)"), std::string::npos)
      << inner;
}

}  // namespace
}  // namespace tarlo::tsql::testing
