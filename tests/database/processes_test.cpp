// Other processes: one that holds the lock, one that is killed in the middle, and a folder that
// this process may not write to.

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "support.h"

namespace tarlo::database::test {
namespace {

void makeTable(const std::string& file) {
  OpenOptions creating;
  creating.create = true;
  const auto database = openDatabase("sqlite:" + file, creating);
  Lease lease = database->borrow();
  lease->allowDdl(true);
  lease->execute("create table T (ID int identity primary key, Name nvarchar(50))");
  lease->execute("insert into T(Name) values('first')");
}

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
        _exit(1);
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

TEST(Processes, ALockOfAnotherProcessIsWaitedForAndGoesWithIt) {
  const TempFolder folder;
  makeTable(folder.file());
  Child holder([&](const Child::Tell& tell) {
    Foreigner other(folder.file());
    other.run("BEGIN IMMEDIATE");
    other.run("UPDATE T SET Name='theirs'");
    tell('L');
    pause();
  });
  ASSERT_EQ(holder.hear(), 'L');
  OpenOptions options;
  options.busyTimeout = std::chrono::milliseconds(30);
  const auto database = openDatabase("sqlite:" + folder.file(), options);
  auto lease = database->borrow();
  EXPECT_EQ(errorOf([&] { lease->execute("update T set Name='mine'"); }).number(), kTimeout);
  EXPECT_EQ(ask(*lease, "select Name from T"), "tfirst");
  holder.kill();
  lease->execute("update T set Name='mine'");
  EXPECT_EQ(ask(*lease, "select Name from T"), "tmine");
}

TEST(Processes, AKilledWriterLosesNothingThatItHasCommitted) {
  const TempFolder folder;
  makeTable(folder.file());
  long told = 0;
  {
    Child writer([&](const Child::Tell& tell) {
      const auto database = openDatabase("sqlite:" + folder.file());
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
  const auto database = openDatabase("sqlite:" + folder.file());
  auto lease = database->borrow();
  const auto count = lease->open("select count(*) from T where Name<>'first'");
  const long rows = std::stol(variant::toText(count->value(0)));
  EXPECT_EQ(rows % 2, 0);
  EXPECT_GE(rows, 2 * told);
  EXPECT_LE(rows, 2 * told + 2);  // one write may have been done and not told
  sqlite3* raw = nullptr;
  ASSERT_EQ(sqlite3_open(folder.file().c_str(), &raw), SQLITE_OK);
  std::string verdict;
  sqlite3_exec(
      raw, "PRAGMA integrity_check",
      [](void* into, int, char** values, char**) {
        *static_cast<std::string*>(into) += values[0];
        return 0;
      },
      &verdict, nullptr);
  sqlite3_close(raw);
  EXPECT_EQ(verdict, "ok");
}

TEST(Processes, AFolderThatCannotBeWrittenToIsToldOrReadFrom) {
  const TempFolder folder;
  makeTable(folder.file());
  chmod(folder.file().c_str(), 0666);
  chmod(folder.path().c_str(), 0555);
  Child reader([&](const Child::Tell& tell) {
    if (geteuid() == 0 && seteuid(65534) != 0) return tell('?');  // rights do not bind root
    try {
      const auto database = openDatabase("sqlite:" + folder.file());
      auto lease = database->borrow();
      const bool read = ask(*lease, "select Name from T") == "tfirst";
      const auto error = errorOf([&] { lease->execute("update T set Name='x'"); });
      tell(read && error.number() != 0 && !error.description().empty() ? 'R' : 'F');
    } catch (const DatabaseError& error) {
      const bool isClear = error.number() == kConnectionFailed &&
                           error.description().find("folder") != std::string::npos;
      if (!isClear) std::fprintf(stderr, "in the child: %s\n", error.what());
      tell(isClear ? 'E' : 'F');
    }
  });
  const char outcome = reader.hear();
  EXPECT_TRUE(outcome == 'R' || outcome == 'E') << outcome;
  chmod(folder.path().c_str(), 0755);
}

}  // namespace
}  // namespace tarlo::database::test
