// Files that cannot serve, other users in the way, full disks, endless statements.

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <functional>

#include "support.h"

namespace tarlo::database::test {
namespace {

void makeTable(const std::string& file) {
  Foreigner owner(file);
  owner.run("PRAGMA journal_mode=WAL");
  owner.run("CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT)");
  owner.run("INSERT INTO T (Name) VALUES ('first')");
}

// Runs it in a process of its own, whose limits and rights may be changed; true when all of it
// held.
bool inChild(const std::function<bool()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    bool held = false;
    try {
      held = work();
    } catch (const std::exception& error) {
      std::fprintf(stderr, "in the child: %s\n", error.what());
    }
    _exit(held ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(Opening, TellsWhatIsWrongWithTheFile) {
  const TempFolder folder;
  std::ofstream(folder.file("text.db")) << std::string(4096, 'x');
  struct {
    std::string connection;
    bool create;
    const char* part;
  } const cases[] = {
      {"sqlite:" + folder.file("none.db"), false, "There is no database file"},
      {"sqlite:" + folder.file("no/none.db"), true, "folder"},
      {"sqlite:" + folder.path().string(), true, "is a folder"},
      {"sqlite:" + folder.file("text.db"), true, "not a database"},
      {"sqlite:", true, "names no database file"},
      {"other:x", true, "\"other\""},
      {"secret", true, "names no engine"},
      {"", true, "names no engine"},
  };
  for (const auto& [connection, create, part] : cases) {
    OpenOptions options;
    options.create = create;
    const auto error = errorOf([&, &text = connection] { openDatabase(text, options); });
    EXPECT_EQ(error.number(), kConnectionFailed) << connection;
    EXPECT_NE(error.description().find(part), std::string::npos) << error.description();
  }
  EXPECT_FALSE(std::filesystem::exists(folder.file("none.db")));
}

TEST(Opening, AFailureIsNotRememberedAndADatabaseIsOpenedOnce) {
  const TempFolder folder;
  Registry registry;
  const std::string connection = "sqlite:" + folder.file();
  errorOf([&] { registry.find(connection); });
  makeTable(folder.file());
  EXPECT_EQ(&registry.find(connection), &registry.find(connection));
}

TEST(Faults, AReadOnlyFileIsReadAndNotWritten) {
  const TempFolder folder;
  makeTable(folder.file());
  chmod(folder.path().c_str(), 0777);
  chmod(folder.file().c_str(), 0444);
  EXPECT_TRUE(inChild([&] {
    if (geteuid() == 0 && seteuid(65534) != 0) return false;  // rights do not bind root
    const std::string connection = "sqlite:" + folder.file();
    auto database = openDatabase(connection);
    auto lease = database->borrow();
    const auto error = errorOf([&] { lease->execute("update T set Name='x'"); });
    OpenOptions creating;
    creating.create = true;
    const auto refused = errorOf([&] { openDatabase(connection, creating); });
    return ask(*lease, "select Name from T") == "tfirst" &&
           error.description() == "The database can only be read." &&
           refused.number() == kConnectionFailed;
  }));
}

TEST(Faults, ALoginThatOnlyReadsWritesNothing) {
  const TempFolder folder;
  const std::string reading = "sqlite-read:" + folder.file();
  EXPECT_EQ(errorOf([&] { openDatabase(reading, {.create = true}); }).number(), kConnectionFailed);
  EXPECT_FALSE(std::filesystem::exists(folder.file()));
  makeTable(folder.file());
  const auto writer = openDatabase("sqlite:" + folder.file());
  const auto reader = openDatabase(reading);
  auto lease = reader->borrow();
  lease->allowDdl(true);
  for (const char* sql :
       {"update T set Name='x'", "insert into T (Name) values ('y')", "create table U (ID int)"}) {
    EXPECT_EQ(errorOf([&] { lease->execute(sql); }).description(), "The database can only be read.")
        << sql;
  }
  writer->borrow()->execute("update T set Name='second'");
  EXPECT_EQ(ask(*lease, "select Name from T"), "tsecond");
}

TEST(Faults, ADamagedFileIsToldAndItsConnectionNotUsedAgain) {
  const TempFolder folder;
  {
    Foreigner owner(folder.file());
    owner.run("CREATE TABLE T (ID INTEGER PRIMARY KEY, Name TEXT)");
    owner.run("INSERT INTO T (Name) VALUES ('first')");
  }
  // The table's page is the second; the first has the schema.
  std::fstream file(folder.file(), std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(4096);
  file << std::string(4096, '\x7f');
  file.close();
  OpenOptions options;
  options.maxConnections = 1;
  auto database = openDatabase("sqlite:" + folder.file(), options);
  {
    auto lease = database->borrow();
    lease->execute("set identity_insert T on");
    const auto error = errorOf([&] { ask(*lease, "select Name from T"); });
    EXPECT_EQ(error.number(), kConnectionFailed);
    EXPECT_EQ(error.description(), "The database file is damaged.");
    EXPECT_EQ(error.native().code & 0xFF, SQLITE_CORRUPT);
    EXPECT_EQ(error.native().engine, "sqlite");
  }
  // Its place in the pool is free.
  EXPECT_EQ(ask(*database->borrow(), "select 1"), "i1");
}

TEST(Faults, AWriteWaitsForAnotherUserOnlySoLong) {
  const TempFolder folder;
  makeTable(folder.file());
  OpenOptions options;
  options.busyTimeout = std::chrono::milliseconds(30);
  auto database = openDatabase("sqlite:" + folder.file(), options);
  auto lease = database->borrow();
  Foreigner other(folder.file());
  other.run("BEGIN IMMEDIATE");
  const auto error = errorOf([&] { lease->execute("update T set Name='mine'"); });
  EXPECT_EQ(error.number(), kTimeout);
  EXPECT_EQ(error.native().sqlState, "HYT00");
  EXPECT_EQ(ask(*lease, "select Name from T"), "tfirst");  // reading does not wait
  errorOf([&] { Connection::Transaction transaction(*lease); });
  other.run("COMMIT");
  lease->execute("update T set Name='mine'");
  EXPECT_EQ(ask(*lease, "select Name from T"), "tmine");
}

TEST(Faults, AFullDiskUndoesTheStatement) {
  const TempFolder folder;
  makeTable(folder.file());
  EXPECT_TRUE(inChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);  // a write beyond the limit then fails as on a full disk
    auto database = openDatabase("sqlite:" + folder.file());
    auto lease = database->borrow();
    lease->execute("insert into T(Name) values('second')");
    const rlimit limit{200'000, 200'000};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
    const std::string big(1'000'000, 'x');
    const auto error =
        errorOf([&] { lease->execute("insert into T(Name) values('" + big + "')"); });
    return error.description().find("nothing was changed") != std::string::npos &&
           ask(*lease, "select count(*) from T") == "i2";
  }));
  auto database = openDatabase("sqlite:" + folder.file());
  EXPECT_EQ(ask(*database->borrow(), "select Name from T"), "tfirst|tsecond");
}

TEST(Faults, BrokenRulesOfATableAreConstraintErrors) {
  const TempFolder folder;
  makeTable(folder.file());
  Foreigner(folder.file()).run("CREATE UNIQUE INDEX U ON T (Name)");
  auto database = openDatabase("sqlite:" + folder.file());
  auto lease = database->borrow();
  const auto error = errorOf([&] { lease->execute("insert into T(Name) values('first')"); });
  EXPECT_EQ(error.number(), kConstraint);
  EXPECT_EQ(error.description(), "The value is there already: T.Name.");
  EXPECT_EQ(error.native().code, SQLITE_CONSTRAINT_UNIQUE);
}

TEST(Faults, EndlessStatementsAreStopped) {
  const TempFolder folder;
  makeTable(folder.file());
  Foreigner(folder.file())
      .run(
          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
          "INSERT INTO T (Name) SELECT 'n' FROM n");
  auto database = openDatabase("sqlite:" + folder.file());
  auto lease = database->borrow();
  lease->setCommandTimeout(std::chrono::milliseconds(40));
  const std::string cross = "select a.ID from T a,T b,T c where a.ID+b.ID+c.ID<0";
  const std::string rows = "select a.ID from T a,T b,T c";
  const std::string write = "update T set Name='x' where ID<(select count(*) from T a,T b,T c)";
  const std::function<void()> calls[] = {
      [&] { lease->execute(cross); },
      [&] { lease->open(cross); },
      [&] { lease->open(rows)->getRows(); },
      [&] { lease->execute(write); },
  };
  for (const auto& call : calls) {
    const auto error = errorOf(call);
    EXPECT_EQ(error.number(), kTimeout) << error.description();
  }
  EXPECT_EQ(ask(*lease, "select count(*) from T where Name='n'"), "i3000");
}

}  // namespace
}  // namespace tarlo::database::test
