// The file behind a database: deleted, moved, replaced or full while it is open, and the modes of
// what is made.

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "database/private_files.h"
#include "database/schema_version.h"
#include "support.h"
#include "support/no_room.h"

namespace tarlo::database::test {
namespace {

namespace fs = std::filesystem;

void makeTable(Database& database) {
  Lease lease = database.borrow();
  lease->allowDdl(true);
  executeAll(*lease, {"create table T (ID int identity primary key, Name nvarchar(max))",
                      "insert into T (Name) values ('first')"});
}

class OpenFile : public ::testing::Test {
 protected:
  OpenFile() { makeTable(*database_); }

  // Every way to write, on a connection that was open before and on a new one.
  void expectRefused(const std::string& part) {
    Lease old = database_->borrow();
    const std::function<void()> writes[] = {
        [&] { old->execute("insert into T (Name) values ('lost')"); },
        [&] { old->open("insert into T (Name) values ('lost')"); },
        [&] { old->execute("update T set Name='lost'"); },
        [&] { const Connection::Transaction transaction(*old); },
        [&] { database_->borrow(); },  // the old one is lent, so this is a new one
    };
    for (const auto& write : writes) {
      const DatabaseError error = errorOf(write);
      EXPECT_EQ(error.number(), kConnectionFailed);
      EXPECT_EQ(error.native().outage, Outage::Gone);
      EXPECT_NE(error.description().find(part), std::string::npos) << error.description();
    }
  }

  void move(const std::string& from, const std::string& to) {
    fs::rename(folder_.file(from), folder_.file(to));
  }

  const TempFolder folder_;
  const std::unique_ptr<Database> database_ =
      openDatabase("sqlite:" + folder_.file(), {.create = true});
};

TEST_F(OpenFile, MovedAwayTakesNoWritesUntilItIsBack) {
  EXPECT_EQ(database_->health(0).trouble, Trouble::None);
  move("test.db", "away.db");
  EXPECT_EQ(database_->health(0).trouble, Trouble::Missing);
  expectRefused("is gone");
  move("away.db", "test.db");
  EXPECT_EQ(database_->health(0).trouble, Trouble::None);
  database_->borrow()->execute("insert into T (Name) values ('second')");
  EXPECT_EQ(ask(*database_->borrow(), "select Name from T"), "tfirst|tsecond");
}

TEST_F(OpenFile, ReplacedByAnotherTakesNoWrites) {
  move("test.db", "away.db");
  fs::copy_file(folder_.file("away.db"), folder_.file());
  EXPECT_EQ(database_->health(0).trouble, Trouble::Replaced);
  expectRefused("Another file stands");
}

TEST_F(OpenFile, ATransactionIsNotCommittedIntoADeletedFile) {
  Lease lease = database_->borrow();
  const DatabaseError error = errorOf([&] {
    Connection::Transaction transaction(*lease);
    lease->execute("update T set Name='changed'");
    move("test.db", "away.db");
    transaction.commit();
  });
  EXPECT_EQ(error.native().outage, Outage::Gone);
  move("away.db", "test.db");
  EXPECT_EQ(ask(*lease, "select Name from T"), "tfirst");
}

// SQLite would go on with a log that nobody finds again.
TEST_F(OpenFile, WithoutItsLogTakesNoWrites) {
  fs::remove(folder_.file("test.db-wal"));
  EXPECT_EQ(database_->health(0).trouble, Trouble::Replaced);
  expectRefused("test.db-wal");
}

TEST(DatabaseHealth, SeesAFullDiskAndWhatMayNotBeWritten) {
  const TempFolder folder;
  const auto database = openDatabase("sqlite:" + folder.file(), {.create = true});
  EXPECT_EQ(database->health(1).trouble, Trouble::None);
  EXPECT_EQ(database->health(std::uint64_t{1} << 60).trouble, Trouble::Full);
  const auto reading = openDatabase("sqlite-read:" + folder.file());
  EXPECT_EQ(reading->health(std::uint64_t{1} << 60).trouble, Trouble::None);
  chmod(folder.path().c_str(), 0755);
  const pid_t child = fork();
  if (child == 0) {  // rights do not bind root
    const bool isOther = geteuid() != 0 || seteuid(65534) == 0;
    chmod(folder.path().c_str(), 0555);
    _exit(isOther && database->health(0).trouble == Trouble::NotWritable ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

TEST(DatabaseHealth, RemembersAWriteThatFoundNoRoom) {
  const TempFolder folder;
  makeTable(*openDatabase("sqlite:" + folder.file(), {.create = true}));
  const testing::NoRoom noRoom;
  const auto database = openDatabase("sqlite:" + folder.file());
  Lease lease = database->borrow();
  const DatabaseError error =
      errorOf([&] { lease->execute("insert into T (Name) select replicate('x',8000) from T"); });
  EXPECT_EQ(error.native().outage, Outage::Full);
  EXPECT_EQ(database->health(0).trouble, Trouble::Full);
  EXPECT_EQ(ask(*lease, "select ID from T"), "i1");
  lease->execute("update T set Name='other'");
  EXPECT_EQ(database->health(0).trouble, Trouble::None);
}

unsigned modeOf(const std::string& file) {
  struct stat found {};
  EXPECT_EQ(stat(file.c_str(), &found), 0) << file;
  return found.st_mode & 0777;
}

TEST(PrivateFiles, AreTheirOwnersWhateverTheUmask) {
  const TempFolder folder;
  for (const mode_t mask : {0000, 0022, 0277}) {
    const std::string name = folder.file("m" + std::to_string(mask) + ".db");
    const mode_t before = umask(mask);
    {
      const auto database = openDatabase("sqlite:" + name, {.create = true});
      makeTable(*database);
      for (const char* suffix : {"", "-wal", "-shm"}) EXPECT_EQ(modeOf(name + suffix), 0600u);
    }
    EXPECT_FALSE(makePrivateFolders(folder.path() / std::to_string(mask) / "inner"));
    EXPECT_TRUE(makePrivateFile(folder.file("log")));
    umask(before);
    EXPECT_EQ(modeOf(folder.file(std::to_string(mask))), 0700u);
    EXPECT_EQ(modeOf(folder.file(std::to_string(mask) + "/inner")), 0700u);
  }
  EXPECT_EQ(modeOf(folder.file("log")), 0600u);
}

TEST(PrivateFiles, LeaveWhatIsThere) {
  const TempFolder folder;
  std::ofstream(folder.file("log")) << "a line\n";
  chmod(folder.file("log").c_str(), 0644);
  EXPECT_TRUE(makePrivateFile(folder.file("log")));
  EXPECT_EQ(modeOf(folder.file("log")), 0644u);
  EXPECT_EQ(fs::file_size(folder.file("log")), 7u);
  EXPECT_TRUE(isReadableByAll(folder.file("log")));
  chmod(folder.file("log").c_str(), 0640);
  EXPECT_FALSE(isReadableByAll(folder.file("log")));
  EXPECT_FALSE(makePrivateFile(folder.file("no/folder")));
}

}  // namespace
}  // namespace tarlo::database::test
