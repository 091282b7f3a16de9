#include "app/cli_fixture.h"

#include "app/exit_code.h"
#include "support/text.h"

namespace tarlo::app {
namespace {

using testing::holds;

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

TEST_F(CliCompileTest, AControlAsAFormGetsIt) {
  const CliResult list = on({"control", "4", "--rows", "1"});
  ASSERT_EQ(list.exitCode, kDone) << list.err;
  for (const char* part : {"4 客户列表", "list\n", "title      城市", "select ", "(1 row"})
    EXPECT_TRUE(holds(list.out, part)) << part << list.out;
  EXPECT_TRUE(holds(on({"control", "2"}).out, "5303 [")) << on({"control", "2"}).out;
  EXPECT_TRUE(holds(on({"control", "3"}).out, "level      [UserTb_Task],"));
  EXPECT_TRUE(holds(on({"control", "99"}).err, "There is no control scheme 99."));
  change(
      "update Zembra_Query_Field set QF_Relation='select [Gone] from [T]|||t' where QF_ID in "
      "(1,4)");
  for (const char* id : {"1", "4"}) EXPECT_EQ(on({"control", id}).exitCode, kFailed);
}

TEST_F(CliCompileTest, PropagateTellsUnchangedChangedAndBroken) {
  // The demo's dictionary has moved on since its schemes were saved.
  ASSERT_EQ(on({"propagate", "UserTb_Customer"}).exitCode, kDone);
  const CliResult calm = on({"propagate", "UserTb_Customer", "--dry-run"});
  EXPECT_EQ(calm.exitCode, kDone) << calm.out;
  EXPECT_TRUE(holds(calm.out, "0 would change, 0 broken; 0 controls no longer run")) << calm.out;

  change("update Zembra_DataDict_Field set DDF_CName=N'所在城市' where DDF_Name='City'");
  const std::string before = on({"sql", "--csv", "select Query_Fields from Zembra_Query_Main"}).out;
  const CliResult dry = on({"propagate", "UserTb_Customer", "--dry-run"});
  EXPECT_EQ(dry.exitCode, kDifferent);
  EXPECT_TRUE(holds(dry.out, "scheme 1 客户档案一览: changed\n")) << dry.out;
  EXPECT_TRUE(holds(dry.out, "+ [UserTb_Customer].[City] as [客户.所在城市]")) << dry.out;
  EXPECT_EQ(on({"sql", "--csv", "select Query_Fields from Zembra_Query_Main"}).out, before);
  EXPECT_EQ(on({"propagate", "UserTb_Customer"}).exitCode, kDone);
  EXPECT_NE(on({"sql", "--csv", "select Query_Fields from Zembra_Query_Main"}).out, before);

  // A field that the table does not have breaks the scheme; a control keeps its old statement.
  change("update Zembra_DataDict_Field set DDF_Name='Gone' where DDF_Name='City'");
  change(
      "update Zembra_Query_Field set QF_Relation='select [Gone] from [UserTb_Customer]' where "
      "QF_ID=1");
  const CliResult broken = on({"propagate", "UserTb_Customer"});
  EXPECT_EQ(broken.exitCode, kDifferent);
  EXPECT_TRUE(holds(broken.out, "scheme 1 客户档案一览: broken: ")) << broken.out;
  EXPECT_TRUE(holds(broken.out, "control 1 客户下拉框 on scheme 1: no longer runs: "));
  EXPECT_TRUE(holds(on({"propagate", "Nowhere"}).err, "has no table 'Nowhere'"));
}

TEST_F(CliCompileTest, FreezeKeepsOneVersionOfAnUnchangedScheme) {
  const CliResult first = on({"freeze", "1"});
  ASSERT_EQ(first.exitCode, kDone) << first.err;
  EXPECT_EQ(on({"freeze", "1"}).out, first.out);
  change("update Zembra_Query_Main set Zembra_ModiDate='2031-01-01' where Query_ID=1");
  EXPECT_NE(on({"freeze", "1"}).out, first.out);
  EXPECT_EQ(on({"freeze", "9999"}).exitCode, kFailed);
}

}  // namespace
}  // namespace tarlo::app
