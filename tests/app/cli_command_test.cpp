#include "app/cli_fixture.h"

#include "app/exit_code.h"
#include "app/json_value.h"
#include "support/text.h"

namespace tarlo::app {
namespace {

using testing::holds;
using ::testing::Test;
using Arguments = std::vector<std::string>;

// A database with one small table, made by the program itself.
class CliDatabaseTest : public CliTest {
 protected:
  void SetUp() override {
    CliTest::SetUp();
    ASSERT_EQ(cli({"init", "-d", db()}).exitCode, kDone);
    ASSERT_EQ(sql({"create table T (id int identity primary key, name nvarchar(20), n int)"}).out,
              "done\n");
  }
  std::string db() const { return connection("t.db"); }
  CliResult sql(Arguments arguments) const {
    arguments.insert(arguments.begin(), {"sql", "--database", db()});
    return cli(arguments);
  }
  CliResult call(Arguments arguments) const {
    arguments.insert(arguments.begin(), {"call", "--database", db()});
    return cli(arguments);
  }
};

TEST(CliTestUsage, WrongCommandLinesAreToldInWords) {
  const std::pair<Arguments, const char*> rows[] = {
      {{"complie"}, "Did you mean 'compile'?"},
      {{"xyzzyxyzzy"}, "The commands are: serve, init, compile"},
      {{"--nonsense"}, "--nonsense"},
      {{"sql", "--colour", "select 1"}, "--colour"},
      {{"sql"}, "Give either a statement or --file"},
      {{"sql", "--json", "--csv", "select 1"}, "excludes"},
      {{"sql", "--translate"}, "statement"},
      {{"call"}, "operation is required"},
      {{"call", "getTableName_Quer", "1"}, "Did you mean 'getTableName_Query'?"},
      {{"call", "validINT", "json:{"}, "not JSON"},
      {{"compile"}, "Give the ids of schemes, or --all."},
      {{"compile", "12x"}, "'12x' is not an id."},
      {{"compile", "--all", "--rows", "-1"}, "--rows"},
      {{"init", "-d", "sqlite::memory:"}, "sqlite:FILE"},
      {{"compile", "--all", "--rows", "0"}, "not a number of rows"},
      {{"operations", "surplus"}, "'surplus' is one argument too many"},
      {{"sql", "select 1", "select 2"}, "'select 2' is one argument too many"},
  };
  for (const auto& [arguments, message] : rows) {
    const CliResult result = cli(arguments);
    EXPECT_EQ(result.exitCode, kUsage) << arguments.front() << ": " << result.err;
    EXPECT_TRUE(holds(result.err, message)) << result.err;
    EXPECT_EQ(result.out, "");
  }
}

TEST(CliTestUsage, HelpAndVersionGoToTheOutput) {
  for (const char* name : {"init", "call", "sql", "compile", "operations"}) {
    const CliResult result = cli({name, "--help"});
    EXPECT_EQ(result.exitCode, kDone);
    EXPECT_TRUE(holds(result.out, std::string("tarloquery ") + name)) << result.out;
    EXPECT_TRUE(holds(result.out, "Exit codes:")) << result.out;
  }
  EXPECT_EQ(cli({"--version"}).exitCode, kDone);
  EXPECT_TRUE(holds(cli({"--version"}).out, "tarloquery "));
}

TEST_F(CliTest, InitNeverTouchesWhatIsThere) {
  ASSERT_EQ(cli({"init", "-d", connection("new/sub/t.db")}).exitCode, kDone);
  const CliResult again = cli({"init", "-d", connection("new/sub/t.db")});
  EXPECT_EQ(again.exitCode, kAlreadyThere);
  EXPECT_TRUE(holds(again.err, "nothing was changed")) << again.err;

  write("plain.txt", "not a database, and long enough to be read as one: ................");
  EXPECT_EQ(cli({"init", "-d", connection("plain.txt")}).exitCode, kNoDatabase);
  const CliResult below = cli({"init", "-d", connection("plain.txt/sub/t.db")});
  EXPECT_EQ(below.exitCode, kNoDatabase);
  EXPECT_TRUE(holds(below.err, "cannot be made")) << below.err;
  EXPECT_EQ(files(), (Arguments{"new", "plain.txt"}));
  write("empty.db", "");  // a database without tables
  EXPECT_EQ(cli({"init", "-d", connection("empty.db")}).exitCode, kDone);
}

TEST_F(CliTest, AMissingDatabaseHasItsOwnExitCode) {
  const Arguments rows[] = {{"sql", "-d", connection("none.db"), "select 1"},
                            {"call", "-d", connection("none.db"), "validINT", "5"},
                            {"compile", "-d", connection("none.db"), "1"},
                            {"sql", "-d", "oracle:x", "select 1"}};
  for (const Arguments& arguments : rows) {
    const CliResult result = cli(arguments);
    EXPECT_EQ(result.exitCode, kNoDatabase) << result.err;
    EXPECT_TRUE(holds(result.err, "--database names")) << result.err;
  }
  EXPECT_TRUE(files().empty());
}

TEST_F(CliDatabaseTest, RowsInThreeForms) {
  ASSERT_EQ(
      sql({"insert into T (name, n) values (N'客户', 5), (null, -7), (N'a,\"b', null)"}).exitCode,
      kDone);
  const char* select = "select id, name, n as [数量] from T order by id";
  EXPECT_EQ(sql({select}).out,
            "id  name  数量\n--  ----  ----\n 1  客户     5\n 2  NULL    -7\n"
            " 3  a,\"b  NULL\n(3 rows)\n");
  EXPECT_EQ(sql({"--json", select}).out,
            "{\"columns\": [\"id\",\"name\",\"数量\"], \"rows\": [\n[1,\"客户\",5],\n[2,null,-7],\n"
            "[3,\"a,\\\"b\",null]\n]}\n");
  EXPECT_EQ(sql({"--csv", select}).out, "id,name,数量\r\n1,客户,5\r\n2,,-7\r\n3,\"a,\"\"b\",\r\n");
  EXPECT_EQ(sql({"--csv",
                 "select '' as a, null as b, cast(10.50 as decimal(9,2)) as c, '=1' as d, 'x"
                 "' + char(10) + 'y' as [e,f]"})
                .out,
            "a,b,c,d,\"e,f\"\r\n\"\",,10.5,=1,\"x\ny\"\r\n");
  EXPECT_EQ(sql({"--json", "select id from T where id < 0"}).out,
            "{\"columns\": [\"id\"], \"rows\": []}\n");
  EXPECT_EQ(sql({"-- a comment first\nselect count(*) as c from T"}).out, "c\n-\n3\n(1 row)\n");
}

TEST_F(CliDatabaseTest, ARefusedStatementIsToldWithItsReason) {
  for (const char* wrong :
       {"select nothing from T", "selec 1", "select * from Missing", "\xFF", "", "select 'open"}) {
    const CliResult result = sql({wrong});
    EXPECT_EQ(result.exitCode, kFailed) << wrong;
    EXPECT_EQ(result.out, "") << wrong;
    EXPECT_GT(result.err.size(), 15u) << wrong;
  }
}

TEST_F(CliDatabaseTest, TranslateShowsTheEnginesTextAndRunsNothing) {
  const CliResult result = sql({"--translate", "insert into T (name) values ('x')"});
  EXPECT_EQ(result.exitCode, kDone) << result.err;
  EXPECT_TRUE(holds(result.out, "INSERT")) << result.out;
  EXPECT_TRUE(holds(sql({"select count(*) as c from T"}).out, "0\n"));
}

TEST_F(CliDatabaseTest, AScriptStopsAtTheFirstRefusedBatch) {
  write("s.sql",
        "set identity_insert T on\nGO\ninsert into T (id, name) values (40, 'a')\n go \n"
        "\n-- the third batch\nselect id\n  from Nowhere\nGO\ninsert into T (name) values ('b')\n");
  const CliResult result = sql({"--file", path("s.sql")});
  EXPECT_EQ(result.exitCode, kFailed);
  EXPECT_TRUE(holds(result.err, "line 8")) << result.err;
  EXPECT_TRUE(holds(sql({"--csv", "select id, name from T"}).out, "40,a\r\n"));
  EXPECT_FALSE(holds(sql({"--csv", "select id, name from T"}).out, "b\r\n"));
  EXPECT_EQ(sql({"--file", path("missing.sql")}).exitCode, kFailed);
  EXPECT_EQ(sql({"--file", folder_.string()}).exitCode, kFailed);
}

TEST_F(CliDatabaseTest, CallGivesResultArgumentsAndPage) {
  const Json written = Json::parse(call({"PRESQLFORMAT", "it's", "json:true"}).out);
  EXPECT_EQ(written["result"], "'it''s'");
  EXPECT_EQ(written["arguments"], Json::parse("[\"'it''s'\", true]"));
  EXPECT_EQ(written["response"], "");
  EXPECT_FALSE(written.contains("error"));

  EXPECT_EQ(Json::parse(call({"validINT", "-1"}).out)["result"], true);
  EXPECT_EQ(Json::parse(call({"replaceChar", "--", "--file"}).out)["result"], "--file");
  EXPECT_EQ(Json::parse(call({"replaceChar", "[a],[b]"}).out)["result"], "[a],[b]");
  EXPECT_EQ(Json::parse(call({"replaceChar", "json:null"}).out)["result"], "");
  EXPECT_EQ(Json::parse(call({"isNothing", "json:"}).out)["result"], true);
  EXPECT_EQ(call({"replaceChar", "\xFF\xFE"}).exitCode, kDone);
}

TEST_F(CliDatabaseTest, ARaisedErrorIsPartOfTheOutcome) {
  const CliResult result = call({"replaceChar", "json:[1]"});
  EXPECT_EQ(result.exitCode, kFailed);
  const Json outcome = Json::parse(result.out);
  ASSERT_TRUE(outcome.contains("error"));
  EXPECT_TRUE(outcome["error"]["number"].is_number());
  EXPECT_GT(outcome["error"]["description"].get<std::string>().size(), 10u);
  const CliResult count = call({"validINT"});
  EXPECT_EQ(count.exitCode, kFailed);
  EXPECT_EQ(Json::parse(count.out)["error"]["number"], 450);
  EXPECT_TRUE(holds(count.out, "validINT takes 1 argument: iINT; 0 given")) << count.out;
  EXPECT_EQ(call({"--session", "novalue", "validINT", "5"}).exitCode, kUsage);
}

}  // namespace
}  // namespace tarlo::app
