// What the server says about itself while its database is taken away, locked, filled up or of
// another version; what a page then says; and what the housekeeping removes.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>

#include "component/operations.h"
#include "host/upkeep/upkeep.h"
#include "siblings/siblings.h"
#include "site_support.h"
#include "support/no_room.h"
#include "variant/convert.h"

namespace tarlo::host::testing {
namespace {

namespace fs = std::filesystem;
using std::chrono::hours;
using std::chrono::seconds;

Config everybodyDesigns() {
  Config config;
  config.designersOnly = false;
  return config;
}

class UpkeepTest : public ::testing::Test {
 protected:
  UpkeepTest() : site_(everybodyDesigns()) {
    run("insert into Zembra_Query_Field (QF_Name,QF_NameID,QF_FieldType) values ('control',1,1)");
  }

  void run(const std::string& sql) { site_.database().borrow()->execute(sql); }
  std::string ask(const std::string& sql) { return site_.ask(sql); }
  fs::path file() { return database_.substr(std::string("sqlite:").size()); }

  std::string ready() {
    site_.site().readiness().look();
    const auto answer = site_.get("/readyz");
    EXPECT_EQ(answer->status, answer->body == "ready\n" ? 200U : 503U);
    return answer->body;
  }

  // An operation that says "deleted" whatever became of it.
  std::unique_ptr<Answer> deleteControl() {
    if (site_.cookie().empty()) site_.signInAs("admin");
    return site_.post("/TarloQuery.Zembra", "action=delSearch_UsrField&ID=1",
                      {{"Referer", "http://site.example/"}});
  }
  void expectRefused(const char* title) {
    const auto answer = deleteControl();
    EXPECT_EQ(answer->status, 503U) << answer->text();
    EXPECT_EQ(answer->header("Retry-After"), "5");
    EXPECT_TRUE(holds(answer->text(), title)) << answer->text();
    EXPECT_FALSE(holds(answer->text(), "已经从系统中删除")) << answer->text();
    EXPECT_TRUE(holds(site_.log(), "test-1 \"TarloQuery delSearch_UsrField\" failed: error"))
        << site_.log();
    EXPECT_EQ(ask("select Zembra_Flag from Zembra_Query_Field where QF_ID=1"), "1");
  }

  TestSite site_;
  const std::string database_ = site_.changeConfig().database;
};

TEST_F(UpkeepTest, NothingIsSavedIntoAFileThatIsGone) {
  EXPECT_EQ(ready(), "ready\n");
  site_.signInAs("admin");
  const fs::path away = file().string() + ".away";
  fs::rename(file(), away);
  EXPECT_EQ(site_.get("/readyz")->body, "ready\n");  // as it was when somebody looked
  EXPECT_EQ(ready(), "not ready: database-missing\n");
  expectRefused("数据库暂时不可用");
  fs::copy_file(away, file());
  EXPECT_EQ(ready(), "not ready: database-replaced\n");
  EXPECT_EQ(ready(), "not ready: database-replaced\n");
  expectRefused("数据库暂时不可用");
  fs::remove(file());
  fs::rename(away, file());
  EXPECT_EQ(ready(), "ready\n");
  EXPECT_TRUE(holds(deleteControl()->text(), "已经从系统中删除"));
  EXPECT_EQ(ask("select Zembra_Flag from Zembra_Query_Field where QF_ID=1"), "0");
  // The log has one line for each change, with the file; users never see that.
  const std::string log = site_.log();
  const std::size_t replaced = log.find("not ready, database-replaced");
  ASSERT_NE(replaced, std::string::npos) << log;
  EXPECT_NE(log.find(file().string(), replaced), std::string::npos);
  EXPECT_EQ(log.find("not ready, database-replaced", replaced + 1), std::string::npos);
  EXPECT_TRUE(holds(log, "ready again"));
}

TEST_F(UpkeepTest, AnotherVersionOfTheTablesIsNotReady) {
  const std::pair<const char*, const char*> rows[] = {
      {"update Tarlo_Schema set Version=Version+1", "not ready: schema-new\n"},
      {"update Tarlo_Schema set Version=Version-2", "not ready: schema-old\n"},
      {"update Tarlo_Schema set Version=Version+1", "ready\n"}};
  for (const auto& [change, said] : rows) {
    run(change);
    EXPECT_EQ(ready(), said) << change;
  }
  site_.changeConfig().diskReserve = std::size_t{1} << 60;
  EXPECT_EQ(ready(), "not ready: disk-full\n");
}

// An operation that cannot even have a connection.
TEST_F(UpkeepTest, NothingIsSavedWithoutAConnectionEither) {
  site_.signInAs("admin");
  site_.get("/");
  std::vector<database::Lease> lent;
  lent.push_back(site_.database().borrow());
  fs::rename(file(), file().string() + ".away");
  const auto answer = deleteControl();
  EXPECT_EQ(answer->status, 503U) << answer->text();
  EXPECT_FALSE(holds(answer->text(), "已经从系统中删除")) << answer->text();
}

// Another program that keeps the database.
class Locker {
 public:
  explicit Locker(const fs::path& file) {
    EXPECT_EQ(sqlite3_open(file.c_str(), &handle_), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  }
  ~Locker() { sqlite3_close(handle_); }
  Locker(const Locker&) = delete;
  Locker& operator=(const Locker&) = delete;

 private:
  sqlite3* handle_ = nullptr;
};

TEST_F(UpkeepTest, ALongLockIsNotReadyAndAShortOneIs) {
  std::ostringstream log;
  database::Registry databases;
  auto now = Readiness::Clock::now();
  Readiness readiness(database_, databases, 0, loggerTo(log), [&] { return now; });
  EXPECT_EQ(readiness.reason(), "starting");
  {
    const Locker locker(file());
    readiness.look();
    EXPECT_EQ(readiness.reason(), "");
    now += Readiness::kPatience;
    readiness.look();
    EXPECT_EQ(readiness.reason(), "database-locked");
  }
  readiness.look();
  EXPECT_EQ(readiness.reason(), "");
}

TEST_F(UpkeepTest, ABusyDatabaseIsSaidToBeBusy) {
  site_.signInAs("admin");
  site_.get("/");
  const Locker locker(file());
  expectRefused("服务器繁忙");
}

// A user's scheme and a template that it can be bound to, of a size that needs further pages.
void addBinding(const std::string& connection) {
  const auto database = database::openDatabase(connection);
  database::Lease lease = database->borrow();
  for (const std::string& sql : {
           std::string("insert into Zembra_DataDict_Field (DDF_TableID,DDF_Type) values (7,1)"),
           std::string("insert into Zembra_DataDict_Relation (DDR_MainTableID,DDR_MainFieldID,"
                       "DDR_RelationTableID) values (7,1,7)"),
           std::string("insert into Zembra_Query_Main (Query_Name,Query_Prikey,Query_MainTBID) "
                       "values ('mine','1',7)"),
           "insert into Zembra_Query_Field (QF_Name,QF_NameID,QF_FieldType,QF_Relation) values "
           "('template',1,1,'" +
               std::string(50'000, 'r') + "')",
       }) {
    lease->execute(sql);
  }
}

TEST(FullDisk, ASaveThatFindsNoRoomSaysSo) {
  TestSite site(everybodyDesigns());
  addBinding(site.changeConfig().database);
  {
    const tarlo::testing::NoRoom noRoom;
    site.signInAs("admin");
    const auto answer = site.post(
        "/TarloQuery.Zembra", "action=addSearchDlg_UsrModel3&QF_Name=bound&modelid=1&queryid=1%7C1",
        {{"Referer", "http://site.example/"}});
    EXPECT_EQ(answer->status, 503U) << answer->text();
    EXPECT_EQ(answer->header("Retry-After"), "5");
    EXPECT_TRUE(holds(answer->text(), "没有保存任何内容")) << answer->text();
    EXPECT_TRUE(holds(site.log(), "state 53100")) << site.log();
    EXPECT_EQ(site.ask("select count(*) from Zembra_Query_Field where QF_Name='bound'"), "0");
    site.site().readiness().look();
    EXPECT_EQ(site.get("/readyz")->body, "not ready: disk-full\n");
  }
  // A write that finds room is the end of it.
  makeSignInLink(site.database(), site.userId("admin"), seconds(60));
  site.site().readiness().look();
  EXPECT_EQ(site.get("/readyz")->body, "ready\n");
}

class HousekeepingTest : public UpkeepTest {
 protected:
  HousekeepingTest() : housekeeping_(config_, databases_, loggerTo(log_), [this] { return now_; }) {
    config_.database = site_.changeConfig().database;
    config_.drawnGridLife = hours(48);
    config_.operationLogLife = hours(480);
    config_.endedLife = hours(24);
  }

  void round(hours later = hours(0)) {
    now_ += later;
    housekeeping_.run(std::stop_token());
  }
  void draw(int rows) {
    auto connection = site_.database().borrow();
    for (int i = 0; i < rows; ++i)
      connection->execute("insert into Zembra_Temp_TarloTable (TarloTable_SessionID) values ('s')");
  }
  std::string counted(const std::string& table) { return ask("select count(*) from " + table); }

  Config config_;
  database::Registry databases_{{.busyTimeout = std::chrono::milliseconds(100)}};
  std::ostringstream log_;
  Housekeeping::Clock::time_point now_ = Housekeeping::Clock::now();
  Housekeeping housekeeping_;
};

TEST_F(HousekeepingTest, RemovesWhatIsOldAndNothingElse) {
  draw(1200);
  run("insert into Zembra_OperateLog (OperateLog_SQL) values ('one')");
  round();
  round(hours(40));
  draw(3);
  round(hours(7));
  EXPECT_EQ(counted("Zembra_Temp_TarloTable"), "1203");
  EXPECT_EQ(log_.str(), "");
  round(hours(2));
  EXPECT_EQ(counted("Zembra_Temp_TarloTable"), "3");
  EXPECT_TRUE(holds(log_.str(), "housekeeping removed 1200 rows of drawn lists\n")) << log_.str();
  EXPECT_EQ(ask("select min(TarloTable_ID) from Zembra_Temp_TarloTable"), "1201");
  round(hours(72));
  EXPECT_EQ(counted("Zembra_Temp_TarloTable"), "0");
  EXPECT_EQ(counted("Zembra_OperateLog"), "1");
  round(hours(480));
  EXPECT_EQ(counted("Zembra_OperateLog"), "0");
  // The marks of an empty table go with its rows.
  EXPECT_EQ(counted("Tarlo_AgeMark"), "0");
}

TEST_F(HousekeepingTest, RemovesLinksAndTokensSomeTimeAfterTheirEnd) {
  auto& database = site_.database();
  const int admin = site_.userId("admin");
  makeSignInLink(database, admin, hours(1));
  makeSignInLink(database, admin, hours(100));
  makeApiToken(database, admin, hours(1));
  const std::string token = makeApiToken(database, admin, hours(1000));
  round(hours(24));
  EXPECT_EQ(counted("Tarlo_SignInLink"), "2");
  round(hours(2));
  EXPECT_EQ(counted("Tarlo_SignInLink"), "1");
  EXPECT_EQ(counted("Tarlo_ApiToken"), "1");
  EXPECT_TRUE(userOfToken(database, token));
  EXPECT_TRUE(holds(log_.str(), "1 API tokens, 1 sign-in links")) << log_.str();
}

TEST_F(HousekeepingTest, KeepsForEverWhatHasNoLife) {
  config_.drawnGridLife = hours(0);
  config_.operationLogLife = hours(0);
  draw(1);
  round();
  round(hours(24 * 3650));
  EXPECT_EQ(counted("Zembra_Temp_TarloTable"), "1");
  EXPECT_EQ(counted("Tarlo_AgeMark"), "0");
}

TEST_F(HousekeepingTest, AStopEndsItBetweenTwoStepsAndTheRestIsRemovedLater) {
  draw(700);
  round();
  now_ += hours(50);
  std::stop_source stop;
  stop.request_stop();
  housekeeping_.run(stop.get_token());
  EXPECT_EQ(counted("Zembra_Temp_TarloTable"), "700");
  round();
  EXPECT_EQ(counted("Zembra_Temp_TarloTable"), "0");
}

TEST_F(HousekeepingTest, ALockedDatabaseIsALineInTheLogAndNoMore) {
  draw(5);
  round();
  {
    const Locker locker(file());
    round(hours(50));
  }
  EXPECT_TRUE(holds(log_.str(), "housekeeping ended early"));
  EXPECT_EQ(counted("Zembra_Temp_TarloTable"), "5");
  round();
  EXPECT_EQ(counted("Zembra_Temp_TarloTable"), "0");
}

// No page has what the housekeeping has.
TEST(Operations, NoneMayDelete) {
  EXPECT_FALSE(component::operations().empty());
  for (const auto& operation : component::operations())
    EXPECT_TRUE(operation.rights.deletes.empty()) << operation.name;
  for (const auto& operation : siblings::pageOperations())
    EXPECT_TRUE(operation.rights.deletes.empty()) << operation.name;
  EXPECT_TRUE(database::StatementRights::everything().deletes.empty());
}

// The threads of a server: they find the trouble by themselves, and end when they are told to.
TEST_F(UpkeepTest, TheWatcherLooksByItself) {
  EXPECT_EQ(ready(), "ready\n");
  auto logger = std::make_shared<spdlog::logger>("none");
  database::Registry databases;
  Config config;
  config.database = database_;
  Readiness readiness(config.database, databases, 0, logger);
  const Upkeep upkeep(config, databases, readiness, logger);
  for (int i = 0; i < 600 && readiness.reason() != ""; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(readiness.reason(), "");
}

}  // namespace
}  // namespace tarlo::host::testing
