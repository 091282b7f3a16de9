// Files that cannot serve, other users and processes in the way, full disks, endless statements.

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

using namespace std::chrono_literals;

// A process that does the work and tells, by bytes through a pipe, how far it has come.
class Child {
 public:
  using Tell = std::function<void(char)>;
  explicit Child(const std::function<void(const Tell&)>& work) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    process_ = fork();
    if (process_ == 0) {
      close(ends[0]);
      try {
        work([&](char c) {
          if (write(ends[1], &c, 1) != 1) _exit(2);
        });
      } catch (const std::exception& error) {
        std::fprintf(stderr, "in the child: %s\n", error.what());
      }
      _exit(0);
    }
    close(ends[1]);
    read_ = ends[0];
  }
  ~Child() {
    kill();
    close(read_);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // The next byte, 0 when the process is gone.
  char hear() const {
    char c = 0;
    return read(read_, &c, 1) == 1 ? c : '\0';
  }
  void kill() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = 0;
  }

 private:
  pid_t process_ = 0;
  int read_ = -1;
};

// Whether it holds in a process of its own, whose limits and rights may be changed.
bool inChild(const std::function<bool()>& work) {
  return Child([&](const Child::Tell& tell) { tell(work() ? 'Y' : 'N'); }).hear() == 'Y';
}

// As a user whom rights bind; they do not bind root.
bool asNobody(const std::function<bool()>& work) {
  return inChild([&] { return (geteuid() != 0 || seteuid(65534) == 0) && work(); });
}

class Faults : public ::testing::Test {
 protected:
  void makeTable() {
    Foreigner owner(folder_.file());
    owner.run("PRAGMA journal_mode=WAL");
    owner.run("CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT)");
    owner.run("INSERT INTO T (Name) VALUES ('first')");
  }
  std::unique_ptr<Database> open(const OpenOptions& options = {}) const {
    return openDatabase(connection_, options);
  }

  const TempFolder folder_;
  const std::string connection_ = "sqlite:" + folder_.file();
};

TEST_F(Faults, OpeningTellsWhatIsWrongWithTheFile) {
  std::ofstream(folder_.file("text.db")) << std::string(4096, 'x');
  const struct {
    std::string connection;
    bool create;
    const char* part;
  } cases[] = {
      {"sqlite:" + folder_.file("none.db"), false, "There is no database file"},
      {"sqlite:" + folder_.file("no/none.db"), true, "folder"},
      {"sqlite:" + folder_.path().string(), true, "is a folder"},
      {"sqlite:" + folder_.file("text.db"), true, "not a database"},
      {"sqlite:", true, "names no database file"},
      {"other:x", true, "\"other\""},
      {"secret", true, "names no engine"},
      {"", true, "names no engine"},
  };
  for (const auto& row : cases) {
    const auto error = errorOf([&] { openDatabase(row.connection, {.create = row.create}); });
    EXPECT_EQ(error.number(), kConnectionFailed) << row.connection;
    EXPECT_NE(error.description().find(row.part), std::string::npos) << error.description();
  }
  EXPECT_FALSE(std::filesystem::exists(folder_.file("none.db")));
}

TEST_F(Faults, AFailureIsNotRememberedAndADatabaseIsOpenedOnce) {
  Registry registry;
  errorOf([&] { registry.find(connection_); });
  makeTable();
  EXPECT_EQ(&registry.find(connection_), &registry.find(connection_));
}

TEST_F(Faults, AReadOnlyFileIsReadAndNotWritten) {
  makeTable();
  chmod(folder_.path().c_str(), 0777);
  chmod(folder_.file().c_str(), 0444);
  EXPECT_TRUE(asNobody([&] {
    const auto database = open();
    auto lease = database->borrow();
    const auto error = errorOf([&] { lease->execute("update T set Name='x'"); });
    const auto refused = errorOf([&] { open({.create = true}); });
    return ask(*lease, "select Name from T") == "tfirst" &&
           error.description() == "The database can only be read." &&
           refused.number() == kConnectionFailed;
  }));
}

// The log beside the file cannot be made: either the file is read without it or the folder is told.
TEST_F(Faults, AFolderThatCannotBeWrittenToIsToldOrReadFrom) {
  makeTable();
  chmod(folder_.file().c_str(), 0666);
  chmod(folder_.path().c_str(), 0555);
  EXPECT_TRUE(asNobody([&] {
    try {
      const auto database = open();
      auto lease = database->borrow();
      const bool read = ask(*lease, "select Name from T") == "tfirst";
      const auto error = errorOf([&] { lease->execute("update T set Name='x'"); });
      return read && error.number() != 0 && !error.description().empty();
    } catch (const DatabaseError& error) {
      return error.number() == kConnectionFailed &&
             error.description().find("folder") != std::string::npos;
    }
  }));
  chmod(folder_.path().c_str(), 0755);
}

TEST_F(Faults, ALoginThatOnlyReadsWritesNothing) {
  const std::string reading = "sqlite-read:" + folder_.file();
  EXPECT_EQ(errorOf([&] { openDatabase(reading, {.create = true}); }).number(), kConnectionFailed);
  EXPECT_FALSE(std::filesystem::exists(folder_.file()));
  makeTable();
  const auto writer = open();
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

TEST_F(Faults, ADamagedFileIsToldAndItsConnectionNotUsedAgain) {
  {
    Foreigner owner(folder_.file());
    owner.run("CREATE TABLE T (ID INTEGER PRIMARY KEY, Name TEXT)");
    owner.run("INSERT INTO T (Name) VALUES ('first')");
  }
  // The table's page is the second; the first has the schema.
  std::fstream file(folder_.file(), std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(4096);
  file << std::string(4096, '\x7f');
  file.close();
  OpenOptions options;
  options.maxConnections = 1;
  const auto database = open(options);
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

TEST_F(Faults, AWriteWaitsForAnotherProcessOnlySoLong) {
  makeTable();
  Child holder([&](const Child::Tell& tell) {
    Foreigner other(folder_.file());
    other.run("BEGIN IMMEDIATE");
    other.run("UPDATE T SET Name='theirs'");
    tell('L');
    pause();
  });
  ASSERT_EQ(holder.hear(), 'L');
  OpenOptions options;
  options.busyTimeout = 30ms;
  const auto database = open(options);
  auto lease = database->borrow();
  const auto error = errorOf([&] { lease->execute("update T set Name='mine'"); });
  EXPECT_EQ(error.number(), kTimeout);
  EXPECT_EQ(error.native().sqlState, "HYT00");
  EXPECT_EQ(ask(*lease, "select Name from T"), "tfirst");  // reading does not wait
  errorOf([&] { Connection::Transaction transaction(*lease); });
  holder.kill();
  lease->execute("update T set Name='mine'");
  EXPECT_EQ(ask(*lease, "select Name from T"), "tmine");
}

TEST_F(Faults, AKilledWriterLosesNothingThatItHasCommitted) {
  makeTable();
  long told = 0;
  {
    Child writer([&](const Child::Tell& tell) {
      const auto database = open();
      auto lease = database->borrow();
      for (;;) {
        // Two rows at a time, so that half a write would show.
        lease->execute("insert into T(Name) values('a'),('b')");
        tell('W');
      }
    });
    for (; told < 50; ++told) ASSERT_EQ(writer.hear(), 'W');
    writer.kill();
    while (writer.hear() == 'W') ++told;
  }
  const auto count = ask(*open()->borrow(), "select count(*) from T where Name<>'first'");
  const long rows = std::stol(count.substr(1));
  EXPECT_EQ(rows % 2, 0);
  EXPECT_GE(rows, 2 * told);
  EXPECT_LE(rows, 2 * told + 2);  // one write may have been done and not told
  EXPECT_EQ(Foreigner(folder_.file()).column("PRAGMA integrity_check", 0), "ok");
}

TEST_F(Faults, AFullDiskUndoesTheStatement) {
  makeTable();
  EXPECT_TRUE(inChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);  // a write beyond the limit then fails as on a full disk
    const auto database = open();
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
  EXPECT_EQ(ask(*open()->borrow(), "select Name from T"), "tfirst|tsecond");
}

TEST_F(Faults, BrokenRulesOfATableAreConstraintErrors) {
  makeTable();
  Foreigner(folder_.file()).run("CREATE UNIQUE INDEX U ON T (Name)");
  const auto database = open();
  const auto error =
      errorOf([&] { database->borrow()->execute("insert into T(Name) values('first')"); });
  EXPECT_EQ(error.number(), kConstraint);
  EXPECT_EQ(error.description(), "The value is there already: T.Name.");
  EXPECT_EQ(error.native().code, SQLITE_CONSTRAINT_UNIQUE);
}

TEST_F(Faults, EndlessStatementsAreStopped) {
  makeTable();
  Foreigner(folder_.file())
      .run(
          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
          "INSERT INTO T (Name) SELECT 'n' FROM n");
  const auto database = open();
  auto lease = database->borrow();
  lease->setCommandTimeout(40ms);
  const std::string cross = "select a.ID from T a,T b,T c where a.ID+b.ID+c.ID<0";
  const std::string write = "update T set Name='x' where ID<(select count(*) from T a,T b,T c)";
  const std::function<void()> calls[] = {
      [&] { lease->execute(cross); },
      [&] { lease->open(cross); },
      [&] { lease->open("select a.ID from T a,T b,T c")->getRows(); },
      [&] { lease->execute(write); },
  };
  for (const auto& call : calls) EXPECT_EQ(errorOf(call).number(), kTimeout);
  EXPECT_EQ(ask(*lease, "select count(*) from T where Name='n'"), "i3000");
}

}  // namespace
}  // namespace tarlo::database::test
