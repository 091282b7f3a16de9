// Statements and what the parser makes of them. TARLO_REWRITE_GOLDEN=1 writes the expectations
// anew.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "support/golden_file.h"
#include "tsql/error.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"

namespace tarlo::tsql {
namespace {

const std::string kFolder = TARLO_TEST_DATA "/golden/";

std::string resultOf(const std::string& sql) {
  try {
    const ast::Batch batch = parse(sql);
    const std::string printed = printTsql(batch);
    EXPECT_EQ(parse(printed), batch) << sql << "\nprinted: " << printed;
    return printed;
  } catch (const StatementError& error) {
    return std::string("refused: ") + error.what();
  }
}

void compare(const std::string& name, const std::vector<std::string>& statements, bool refused) {
  ASSERT_FALSE(statements.empty());
  std::vector<std::string> results;
  for (const std::string& sql : statements) {
    results.push_back(resultOf(sql));
    EXPECT_EQ(results.back().starts_with("refused: "), refused) << sql << "\n" << results.back();
  }
  const std::string path = kFolder + name + ".expected";
  if (std::getenv("TARLO_REWRITE_GOLDEN") != nullptr) {
    std::ofstream out(path, std::ios::binary);
    for (const std::string& result : results) out << result << "\nGO\n";
    return;
  }
  const std::vector<std::string> expected = testing::goldenEntries(path);
  ASSERT_EQ(results.size(), expected.size());
  for (std::size_t i = 0; i < results.size(); ++i) EXPECT_EQ(results[i], expected[i]);
}

TEST(ParserGolden, Taken) {
  for (const std::string name : {"language", "platform", "business", "unresolved"}) {
    compare(name, testing::goldenEntries(kFolder + name + ".sql"), false);
  }
}

TEST(ParserGolden, TakenAsComputedFields) {
  std::vector<std::string> statements;
  for (const std::string& expression : testing::goldenLines(kFolder + "expressions.txt")) {
    statements.push_back("select " + expression + " as [v] from [UserTb_Contract]");
  }
  compare("expressions", statements, false);
}

TEST(ParserGolden, Refused) {
  compare("refused", testing::goldenEntries(kFolder + "refused.sql"), true);
}

TEST(Parser, ListsTheLiteralsThatAreNoNode) {
  EXPECT_EQ(parse("select top 3 cast(1 as decimal(18,2)), convert(varchar(7), 'x', 120) 't'")
                .fixedOrdinals,
            (std::vector<int>{2, 3, 4, 6, 7}));
}

}  // namespace
}  // namespace tarlo::tsql
