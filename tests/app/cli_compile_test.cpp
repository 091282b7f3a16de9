#include "app/cli_fixture.h"

#include "app/exit_code.h"

namespace tarlo::app {
namespace {

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// One demo database for all tests of this file; each works on a copy.
class CliCompileTest : public CliTest {
 protected:
  void SetUp() override {
    CliTest::SetUp();
    const CliResult made = cli({"init", "--demo", "-d", connection("demo.db")});
    ASSERT_EQ(made.exitCode, kDone) << made.err;
  }
  CliResult on(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin() + 1, {"--database", connection("demo.db")});
    return cli(arguments);
  }
  void change(const std::string& statement) const {
    const CliResult result = on({"sql", statement});
    ASSERT_EQ(result.exitCode, kDone) << result.err;
  }
};

TEST_F(CliCompileTest, PrintsTheStatementAndItsRows) {
  const CliResult plain = on({"compile", "1"});
  ASSERT_EQ(plain.exitCode, kDone) << plain.err;
  EXPECT_TRUE(holds(plain.out, "(getQuery_None)\nselect ")) << plain.out;
  const CliResult rows = on({"compile", "1", "--rows", "2"});
  EXPECT_TRUE(holds(rows.out, "(2 rows")) << rows.out << rows.err;

  const CliResult missing = on({"compile", "99999", "1"});
  EXPECT_EQ(missing.exitCode, kFailed);
  EXPECT_TRUE(holds(missing.err, "scheme 99999: there is no such scheme")) << missing.err;
  EXPECT_TRUE(holds(missing.out, "(getQuery_None)"));
}

TEST_F(CliCompileTest, CompareTellsEqualDifferentAndBroken) {
  change("update Zembra_Query_Main set Query_Fields='select 1 as [a]' where Query_ID=1");
  const CliResult different = on({"compile", "--compare", "1"});
  EXPECT_EQ(different.exitCode, kDifferent);
  EXPECT_TRUE(holds(different.out, "differs: ")) << different.out;
  EXPECT_TRUE(holds(different.out, "  - 1 as [a]")) << different.out;

  change(
      "update Zembra_Query_Main set Query_Fields='select [Gone] from [UserTb_Customer]'"
      " where Query_ID=1");
  const CliResult broken = on({"compile", "--compare", "1"});
  EXPECT_EQ(broken.exitCode, kDifferent);
  EXPECT_TRUE(holds(broken.out, "no longer runs: ")) << broken.out;
  EXPECT_TRUE(holds(broken.out, "Gone")) << broken.out;
  EXPECT_TRUE(holds(broken.out, "compiled anew, it runs")) << broken.out;
  EXPECT_FALSE(holds(broken.out, "line 1, column ")) << broken.out;
}

TEST_F(CliCompileTest, TheDemoHoldsStatementsFromBeforeItsLaterChanges) {
  const CliResult all = on({"compile", "--all", "--compare"});
  EXPECT_EQ(all.exitCode, kDifferent) << all.err;
  EXPECT_TRUE(holds(all.out, ": equal\n")) << all.out;
  EXPECT_TRUE(holds(all.out, ": differs: ")) << all.out;
  EXPECT_FALSE(holds(all.out, "no statement is stored")) << all.out;
}

}  // namespace
}  // namespace tarlo::app
