// Many borrowers: what they share, what they must not, and writers side by side.

#include <atomic>
#include <thread>

#include "engines.h"
#include "support.h"

namespace tarlo::database::test {
namespace {

class Pool : public OnEveryEngine {
 protected:
  Pool() {
    const auto owner = home_.other();
    owner->run("CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, N INTEGER)");
    owner->run("CREATE TABLE U (ID INTEGER PRIMARY KEY AUTOINCREMENT, N INTEGER)");
  }
  std::unique_ptr<Database> open(std::size_t connections = 16) const {
    OpenOptions options;
    options.maxConnections = connections;
    options.borrowTimeout = std::chrono::milliseconds(50);
    return home_.open(options);
  }
};

TARLO_ON_EVERY_ENGINE(Pool);

TEST_P(Pool, ABorrowerTooManyWaitsAndIsRefused) {
  auto database = open(2);
  auto first = database->borrow();
  {
    auto second = database->borrow();
    EXPECT_EQ(errorOf([&] { database->borrow(); }).number(), kTimeout);
  }
  auto again = database->borrow();
  EXPECT_EQ(ask(*again, "select count(*) from T"), "i0");
}

TEST_P(Pool, NothingOfABorrowerIsLeftToTheNext) {
  auto database = open(1);
  {
    auto lease = database->borrow();
    lease->allowDdl(true);
    lease->execute("set identity_insert T on");
    lease->execute("insert into T(ID,N) values(5,1)");
  }
  auto lease = database->borrow();
  errorOf([&] { lease->execute("create table V (a int)"); });
  errorOf([&] { lease->execute("insert into T(ID,N) values(6,1)"); });
  lease->execute("set identity_insert U on");
  EXPECT_EQ(ask(*lease, "select ID from T"), "i5");
}

TEST_P(Pool, WritersSideBySideLoseNothing) {
  auto database = open();
  std::atomic<int> failures = 0;
  const auto write = [&] {
    for (int i = 0; i < 40; ++i) {
      try {
        auto lease = database->borrow();
        lease->execute("insert into U(N) values(" + std::to_string(i) + ")");
        lease->execute("update T set N=N+1 where ID=1");
      } catch (const RuntimeError&) {
        ++failures;
      }
    }
  };
  database->borrow()->execute("insert into T(N) values(0)");
  std::thread one(write), two(write);
  one.join();
  two.join();
  EXPECT_EQ(failures, 0);
  auto lease = database->borrow();
  EXPECT_EQ(ask(*lease, "select count(*),count(distinct ID),sum(N) from U"), "i80,i80,i1560");
  EXPECT_EQ(ask(*lease, "select N from T where ID=1"), "i80");
}

TEST_P(Pool, AReaderDoesNotStopAWriter) {
  auto database = open();
  auto reader = database->borrow();
  auto writer = database->borrow();
  auto early = reader->open("select count(*) from T");
  writer->execute("insert into T(N) values(1)");
  EXPECT_EQ(rowsText(*early), "i0");
  early.reset();
  EXPECT_EQ(ask(*reader, "select count(*) from T"), "i1");
}

}  // namespace
}  // namespace tarlo::database::test
