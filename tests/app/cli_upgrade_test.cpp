// Databases of other versions: what refuses them, and what `upgrade` makes of older ones.

#include <sqlite3.h>
#include <sys/stat.h>

#include "app/cli_fixture.h"
#include "app/exit_code.h"
#include "app/platform_schema.h"
#include "app/platform_scripts.h"
#include "database/schema_version.h"
#include "support/text.h"

namespace tarlo::app {
namespace {

using testing::holds;

class UpgradeTest : public CliTest {
 protected:
  void SetUp() override {
    CliTest::SetUp();
    ASSERT_EQ(cli({"init", "-d", db()}).exitCode, kDone);
    run("insert into Zembra_Menu (Menu_Name,Menu_Order) values ('first',3)");
  }
  std::string db() const { return connection("t.db"); }
  CliResult upgrade(std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"upgrade", path("t.db")});
    return cli(more);
  }
  CliResult call(const std::string& database) {
    return cli({"call", "getDateTime", "-d", database});
  }

  // What only the engine's own language can do.
  void engine(const std::string& sql) {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(path("t.db").c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle);
    sqlite3_close(handle);
  }
  void run(const std::string& sql) {
    EXPECT_EQ(cli({"sql", "-d", db(), sql}).exitCode, kDone) << sql;
  }
  std::string ask(const std::string& sql) { return cli({"sql", "--csv", "-d", db(), sql}).out; }

  void makeOlder() {
    engine(
        "drop table Tarlo_Schema; drop table Tarlo_AgeMark; drop table Zembra_Query_Type;"
        "drop table Tarlo_ApiToken; alter table Zembra_Menu drop column Menu_Order;"
        "drop index IX_Menu_Workflow; alter table Zembra_Menu drop column Menu_AddValue;"
        "alter table Zembra_DataDict_Table drop column DDT_ID");
  }
};

TEST_F(UpgradeTest, AnOlderDatabaseIsRefusedWithWhatIsMissing) {
  makeOlder();
  for (const CliResult& result :
       {call(db()), cli({"serve", "-d", db(), "-l", "127.0.0.1:0"}),
        cli({"freeze", "1", "-d", db()}), cli({"sign-in-link", "admin", "-d", db()})}) {
    EXPECT_EQ(result.exitCode, kNoDatabase) << result.out;
    for (const char* part : {"t.db holds no version of the tables", "table Zembra_Query_Type",
                             "column Zembra_Menu.Menu_Order", "column Zembra_DataDict_Table.DDT_ID",
                             "tarloquery upgrade"})
      EXPECT_TRUE(holds(result.err, part)) << result.err;
  }
  // Trial runs on another program's data go on.
  EXPECT_EQ(call("sqlite-read:" + path("t.db")).exitCode, kDone);
}

TEST_F(UpgradeTest, AddsWhatIsMissingAndTouchesNoRow) {
  makeOlder();
  const std::string before = ask("select * from Zembra_Menu");
  const CliResult shown = upgrade({"--dry-run"});
  EXPECT_EQ(shown.exitCode, kDone) << shown.err;
  EXPECT_TRUE(holds(shown.out, "column Zembra_Menu.Menu_Order: is missing")) << shown.out;
  EXPECT_TRUE(holds(shown.out, "Nothing was changed."));
  EXPECT_EQ(ask("select * from Zembra_Menu"), before);
  EXPECT_EQ(call(db()).exitCode, kNoDatabase);

  const CliResult done = upgrade();
  EXPECT_EQ(done.exitCode, kDone) << done.err;
  EXPECT_EQ(done.out,
            "table Zembra_Query_Type: added\ncolumn Zembra_DataDict_Table.DDT_ID: added\n"
            "column Zembra_Menu.Menu_AddValue: added\ncolumn Zembra_Menu.Menu_Order: added\n"
            "table Tarlo_ApiToken: added\ntable Tarlo_Schema: added\n"
            "table Tarlo_AgeMark: added\nversion 1: written\n");
  EXPECT_EQ(call(db()).exitCode, kDone);
  EXPECT_EQ(ask("select Menu_Name,Menu_Order,Menu_AddValue from Zembra_Menu"),
            "Menu_Name,Menu_Order,Menu_AddValue\r\nfirst,0,\r\n");
  EXPECT_EQ(ask("select count(*) as n from Zembra_Query_Type"), "n\r\n3\r\n");
  run("insert into Zembra_DataDict_Table (DDT_Name) values ('X')");
  EXPECT_EQ(ask("select DDT_ID as n from Zembra_DataDict_Table"), "n\r\n1\r\n");
  // The indexes of what is new are there: making one again is refused.
  for (const char* index : {"IX_Menu_Workflow on Zembra_Menu (Menu_AddValue)",
                            "IX_ApiToken_User on Tarlo_ApiToken (User_ID)"})
    EXPECT_EQ(cli({"sql", "-d", db(), std::string("create index ") + index}).exitCode, kFailed);

  const CliResult again = upgrade();
  EXPECT_EQ(again.exitCode, kDone);
  EXPECT_TRUE(holds(again.out, "there is nothing to do")) << again.out;
  EXPECT_EQ(ask("select count(*) as n from Tarlo_Schema"), "n\r\n1\r\n");
}

// The engine computes no default for rows that are there; nothing else is done then either.
TEST_F(UpgradeTest, WhatTheEngineCannotAddUndoesAll) {
  engine(
      "drop table Zembra_Query_Type; insert into Zembra_Query_Field (QF_Name) values ('a');"
      "alter table Zembra_Query_Field drop column Zembra_ModiDate");
  const CliResult result = upgrade();
  EXPECT_EQ(result.exitCode, kFailed);
  EXPECT_TRUE(holds(result.err, "column Zembra_Query_Field.Zembra_ModiDate: ")) << result.err;
  EXPECT_TRUE(holds(result.err, "Nothing was changed.")) << result.err;
  EXPECT_EQ(cli({"sql", "-d", db(), "select 1 from Zembra_Query_Type"}).exitCode, kFailed);
}

TEST_F(UpgradeTest, ANewerDatabaseIsLeftAlone) {
  run("insert into Tarlo_Schema (Version,WrittenBy) values (99,'tarloquery 9.9')");
  for (const CliResult& result : {call(db()), upgrade(), cli({"serve", "-d", db()})}) {
    EXPECT_EQ(result.exitCode, kNoDatabase) << result.out;
    EXPECT_TRUE(holds(result.err, "newer program (tarloquery 9.9)")) << result.err;
    EXPECT_TRUE(holds(result.err, "version 99")) << result.err;
  }
}

TEST_F(UpgradeTest, ServeNamesTheKeyAndTheFileOfADatabaseThatCannotServe) {
  write("text.db", std::string(4096, 'x'));
  const std::pair<std::string, const char*> rows[] = {
      {connection("none.db"), "There is no database file"},
      {connection("no/none.db"), "The folder of the database file"},
      {connection("text.db"), "not a database"},
  };
  for (const auto& [database, why] : rows) {
    const CliResult result = cli({"serve", "-d", database});
    EXPECT_EQ(result.exitCode, kNoDatabase);
    EXPECT_TRUE(holds(result.err, "database.connection = " + database)) << result.err;
    EXPECT_TRUE(holds(result.err, why)) << result.err;
  }
  write("empty.db", "");
  EXPECT_EQ(cli({"serve", "-d", connection("empty.db")}).exitCode, kNoDatabase);
  EXPECT_EQ(upgrade({"-d", connection("empty.db")}).exitCode, kDone);  // the file's name counts
  EXPECT_EQ(cli({"upgrade", connection("empty.db")}).exitCode, kNoDatabase);
}

TEST_F(UpgradeTest, InitMakesFilesForTheirOwnerOnly) {
  const mode_t before = umask(0);
  EXPECT_EQ(cli({"init", "-d", connection("new/folder/t.db")}).exitCode, kDone);
  umask(before);
  for (const auto& [name, mode] : {std::pair<const char*, mode_t>{"new", 0700},
                                   {"new/folder", 0700},
                                   {"new/folder/t.db", 0600}}) {
    struct stat found {};
    ASSERT_EQ(stat(path(name).c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, mode) << name;
  }
}

// A table or a column more, or one of another kind or elsewhere, is another version: servers and
// databases of both must tell themselves apart. When this fails, raise kSchemaVersion and note the
// new pair.
TEST(SchemaVersion, BelongsToTheTablesAsTheyAre) {
  const auto database = database::openDatabase("sqlite::memory:", {.create = true});
  database::Lease connection = database->borrow();
  connection->allowDdl(true);
  runScripts(*connection, tableScripts());
  std::size_t columns = 0, hash = 14695981039346656037u;
  for (const std::string& name : tablesMadeBy(tableScripts())) {
    for (const tsql::Column& column : connection->catalogue().findTable(name)->columns) {
      ++columns;
      const char kind = column.isGenerated  ? 'c'
                        : column.isIdentity ? 'i'
                                            : "?snxfd"[static_cast<int>(column.type.kind)];
      for (const char c : name + "." + column.name + kind + "\n")
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    }
  }
  EXPECT_EQ(database::kSchemaVersion, 1);
  EXPECT_EQ(columns, 193u);
  EXPECT_EQ(hash, 15077599466671389941u);
}

}  // namespace
}  // namespace tarlo::app
