// What a borrower's statements may touch and cost, and that the engine refuses it without the front
// end's help.

#include <chrono>
#include <thread>

#include "database/sqlite/connection.h"
#include "database/statement_check.h"
#include "engines.h"
#include "support.h"
#include "text/fold.h"
#include "text/pieces.h"
#include "variant/error_state.h"

namespace tarlo::database::test {
namespace {

using enum TableGroup;

class Guarded : public OnEveryEngine {
 protected:
  Guarded() {
    Lease lease = database_->borrow();
    lease->allowDdl(true);
    executeAll(
        *lease,
        {"create table Zembra_DataDict_Table (DDT_Name nvarchar(128), Zembra_Flag int)",
         "create table Zembra_User (User_ID int identity primary key, User_Name nvarchar(50))",
         "create table Zembra_Unheard (ID int)", "create table Tarlo_Credential (Hash nvarchar(9))",
         "create table Orders (ID int identity primary key, Amount int, Note nvarchar(max))",
         "create table Payroll (ID int, Salary int)",
         "insert into Zembra_DataDict_Table values ('Orders',1),('Totals',1),('Payroll',0)",
         "insert into Orders (Amount,Note) values (1,'a'),(2,'b')",
         "insert into Payroll values (1,100)", "insert into Zembra_User values ('Ann')"});
    context_.listedTables = "select DDT_Name from Zembra_DataDict_Table where Zembra_Flag <> 0";
  }

  // With the tables' names as they are above: a server may keep them in small letters.
  static std::string spelled(std::string message) {
    for (const char* name :
         {"Orders", "Payroll", "Zembra_User", "Zembra_Unheard", "Tarlo_Credential"}) {
      message =
          text::replace(message, "table " + text::foldedName(name), std::string("table ") + name);
    }
    return message;
  }

  // The rows, or "refused: " and why.
  std::string asked(StatementRights rights, std::string_view sql) {
    context_.rights = rights;
    Lease lease = database_->borrow();
    lease->setContext(&context_);
    try {
      return ask(*lease, sql);
    } catch (const DatabaseError& error) {
      EXPECT_EQ(error.number(), kForbidden) << error.description();
      EXPECT_EQ(error.native().sqlState, "42501");
      return "refused: " + spelled(error.description());
    }
  }

  const std::unique_ptr<Database> database_ = home_.open();
  StatementContext context_;
};

constexpr StatementRights kListed = {.reads = {Business}, .writes = {}};
constexpr StatementRights kUsers = {.reads = {Organisation}, .writes = {}};
constexpr StatementRights kWritesUsers = {.reads = {}, .writes = {Organisation}};
constexpr StatementRights kDeletesOrders = {.reads = {}, .writes = {}, .deletes = {Business}};

TARLO_ON_EVERY_ENGINE(Guarded);

TEST_P(Guarded, HoldsAStatementToItsTables) {
  home_.other()->run("CREATE VIEW Totals AS SELECT Salary FROM Payroll");
  const struct {
    StatementRights rights;
    const char* sql;
    const char* answer;  // the rows; where the refusal is, and why
  } rows[] = {
      {kListed, "select Amount from Orders where ID=2", "i2"},
      {kListed, "select Salary from Payroll", "20: table Payroll may not be read here"},
      {kListed, "select Amount from Orders where ID in (select User_ID from Zembra_User)",
       "60: table Zembra_User may not be read here"},
      {kListed, "select 1 from Orders union select 2 from Zembra_Unheard",
       "42: table Zembra_Unheard may not be read here"},
      {kListed, "select Hash from TARLO_credential", "18: unknown table Tarlo_Credential"},
      {kListed, "update Orders set Amount=9", "1: table Orders may not be written here"},
      {kListed, "insert into Orders (Amount) select Salary from Payroll",
       "1: table Orders may not be written here"},
      {kListed, "set identity_insert Orders on", "1: table Orders may not be written here"},
      // What stands inside a view is its maker's business.
      {kListed, "select Salary from Totals", "i100"},
      {kUsers, "select User_Name from Zembra_User", "tAnn"},
      {kUsers, "select Amount from Orders", "20: table Orders may not be read here"},
      {kUsers, "update Zembra_User set User_Name='x'",
       "1: table Zembra_User may not be written here"},
      {kWritesUsers, "update Zembra_User set User_Name=(select max(Note) from Orders)",
       "57: table Orders may not be read here"},
      {kWritesUsers, "insert into Zembra_User (User_Name) values ('Bob')", "i2"},
      {kDeletesOrders, "delete from Payroll where ID=1",
       "1: rows of table Payroll may not be deleted here"},
      {{}, "select 1", "i1"},
      {{}, "select Amount from Orders", "20: table Orders may not be read here"},
  };
  for (const auto& [rights, sql, answer] : rows) {
    const bool isRefused = std::string_view(answer).find(": ") != std::string_view::npos;
    EXPECT_EQ(asked(rights, sql), std::string(isRefused ? "refused: line 1, column " : "") + answer)
        << sql;
  }
  EXPECT_EQ(ask(*database_->borrow(), "select User_Name from Zembra_User order by User_ID"),
            "tAnn|tBob");
}

TEST_P(Guarded, JudgesAKnownStatementByWhoeverRunsItNow) {
  const char* sql = "select User_Name from Zembra_User where User_ID=1";
  EXPECT_EQ(asked(kUsers, sql), "tAnn");
  // The place is that of this text, though another of its shape was translated.
  EXPECT_EQ(asked(kListed, "select User_Name from   Zembra_User where User_ID=1"),
            "refused: line 1, column 25: table Zembra_User may not be read here");
  EXPECT_EQ(asked(kListed, sql),
            "refused: line 1, column 23: table Zembra_User may not be read here");
  EXPECT_EQ(asked(kUsers, sql), "tAnn");
}

TEST_P(Guarded, SeesWhatTheDictionaryLists) {
  const char* sql = "select Salary from Payroll";
  EXPECT_TRUE(asked(kListed, sql).starts_with("refused"));
  database_->borrow()->execute("update Zembra_DataDict_Table set Zembra_Flag=1");
  EXPECT_EQ(asked(kListed, sql), "i100");
  // What is listed no longer may be read for a moment yet.
  home_.other()->run("update Zembra_DataDict_Table set Zembra_Flag=0");
  std::this_thread::sleep_for(std::chrono::milliseconds(1'100));
  EXPECT_TRUE(asked(kListed, sql).starts_with("refused"));
  const std::vector<std::string> more = {"payroll", "Zembra_User", "Tarlo_Credential"};
  context_.alsoReadable = more;
  EXPECT_EQ(asked(kListed, sql), "i100");
  EXPECT_EQ(asked(kListed, "select User_Name from Zembra_User"), "tAnn");
  EXPECT_TRUE(asked(kListed, "update Payroll set Salary=1").starts_with("refused"));
  EXPECT_TRUE(asked(kListed, "select Hash from Tarlo_Credential").starts_with("refused"));
}

TEST_P(Guarded, TellsTheLogWhatWasRefused) {
  struct Log : RefusalLog {
    std::string lines;
    void refused(std::string_view statement, std::string_view reason) noexcept override {
      lines.append(statement).append(" | ").append(reason).append("\n");
    }
  } log;
  context_.refusals = &log;
  asked(kListed, "select 1 from Orders");
  asked(kListed, "select 1 from Zembra_User");
  EXPECT_EQ(spelled(log.lines),
            "select 1 from Zembra_User | line 1, column 15: table Zembra_User may not be read "
            "here\n");
}

// A connection that finds translations with a fault in them.
class Deceived : public Guarded {
 protected:
  template <class Spoil>
  void spoil(std::string_view sql, Spoil spoil) {
    connection_.explainTranslation(sql);
    tsql::Shape shape;
    ASSERT_TRUE(tsql::shapeOf(sql, shape));
    auto wrong = std::make_shared<CachedTranslation>(*translations_.find(shape));
    spoil(*wrong);
    translations_.insert(shape, wrong);
  }
  int errorUnder(const StatementRights& rights, std::string_view sql) {
    context_.rights = rights;
    connection_.setContext(&context_);
    const int number = errorOf([&] { connection_.open(sql); }).number();
    connection_.setContext(nullptr);
    return number;
  }

  TranslationCache translations_;
  ProcedureTable procedures_;
  DatabaseFile file_{home_.file()};
  SqliteConnection connection_{
      openSqliteFile(home_.file(), {}, procedures_), file_, translations_, procedures_, {}};
};

INSTANTIATE_TEST_SUITE_P(, Deceived, ::testing::Values(Engine::Sqlite), nameOf);

TEST_P(Deceived, TheEngineRefusesWhatTheFrontEndDidNotSee) {
  const char* const statements[] = {
      "select User_Name from Zembra_User", "update Zembra_User set User_Name='x'",
      "insert into Zembra_User (User_Name) values ('x')", "select Salary from Payroll"};
  for (const char* sql : statements) {
    spoil(sql, [](CachedTranslation& made) {
      made.translation.touched.clear();
      made.footprint = {};
    });
  }
  for (int round = 0; round < 2; ++round) {
    for (const char* sql : statements) {
      EXPECT_EQ(errorUnder(kListed, sql), kForbidden) << sql;
      // Prepared for somebody who may, and kept: the next one may not all the same.
      if (round == 0 && std::string_view(sql).starts_with("select")) connection_.open(sql);
    }
  }
  EXPECT_EQ(ask(connection_, "select User_Name from Zembra_User"), "tAnn");
}

TEST_P(Deceived, TheEngineRefusesADeleteThatWasTakenForASelect) {
  const char* sql = "select User_Name from Zembra_User";
  spoil(sql, [](CachedTranslation& made) {
    made.translation.steps = {{tsql::StepRole::Write, "DELETE FROM \"Zembra_User\"", {}}};
  });
  EXPECT_EQ(errorUnder(kWritesUsers, sql), kForbidden);
  EXPECT_EQ(ask(connection_, "select count(User_ID) from Zembra_User"), "i1");
}

TEST_P(Guarded, RowsAreDeletedOnlyByWhoeverMay) {
  const char* sql = "delete from Zembra_User where User_ID in (1,2)";
  const auto refusal = [&](const StatementContext* context) {
    Lease lease = database_->borrow();
    lease->allowDdl(true);
    lease->setContext(context);
    return errorOf([&] { lease->execute(sql); }).description();
  };
  const std::string unknown = "line 1, column 1: expected SELECT";
  // Before and after somebody who may: what was translated for that one is for nobody else.
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(refusal(nullptr).substr(0, unknown.size()), unknown);
    context_.rights = StatementRights::everything();
    EXPECT_EQ(refusal(&context_).substr(0, unknown.size()), unknown);
    const StatementRights rights = {.reads = {}, .writes = {}, .deletes = {Organisation}};
    EXPECT_EQ(asked(rights, "delete from Orders where ID=1"),
              "refused: line 1, column 1: rows of table Orders may not be deleted here");
    EXPECT_EQ(asked(rights, "delete from Zembra_User where User_ID in (select ID from Orders)"),
              "refused: line 1, column 58: table Orders may not be read here");
    EXPECT_EQ(asked(rights, "update Zembra_User set User_Name='x'"),
              "refused: line 1, column 1: table Zembra_User may not be written here");
    if (round == 0) {
      StatementRights housekeeping = rights;
      housekeeping.reads = {Organisation};
      asked(housekeeping, sql);
    }
  }
  EXPECT_EQ(ask(*database_->borrow(), "select count(*) from Zembra_User"), "i0");
}

TEST_P(Guarded, RowsHaveABudget) {
  database_->borrow()->execute(
      "insert into Orders (Amount,Note) select a.Amount,replicate('x',900) "
      "from Orders a,Orders b,Orders c,Orders d,Orders e,Orders f");
  RowTotal total(100'000);
  context_.rights = kListed;
  const auto read = [&](std::size_t most) {
    RowBudget budget(most, total);
    context_.budget = &budget;
    Lease lease = database_->borrow();
    lease->setContext(&context_);
    ErrorState err;
    err.run([&] { lease->open("select Note from Orders")->getRows(); });
    EXPECT_EQ(budget.excess() != RowBudget::Excess::None, err.failed());
    return err.number();
  };
  EXPECT_EQ(read(90'000), 0);
  EXPECT_EQ(read(50'000), kTooManyRows);
  EXPECT_EQ(total.held(), 0u);
  RowBudget other(90'000, total);
  other.take(60'000);
  EXPECT_EQ(read(90'000), kNoRoomForRows);
  EXPECT_EQ(total.held(), 60'000u);
  EXPECT_NO_THROW(other.take(30'000));  // to the last byte
}

TEST_P(Guarded, TemporaryFilesHaveALimit) {
  if (!isSqlite()) GTEST_SKIP() << "a server's own setting limits them";
  const auto limited = home_.open({.temporaryBytes = 1 << 20});
  for (int i = 0; i < 3; ++i) {
    limited->borrow()->execute(
        "insert into Orders (Amount) select a.ID+b.ID from Orders a,Orders b");
  }
  const char* sql =
      "select distinct a.ID*1000+b.ID, replicate('x',200) from Orders a,Orders b where a.ID<400 "
      "and "
      "b.ID<400";
  EXPECT_EQ(errorOf([&] { limited->borrow()->open(sql)->getRows(); }).number(), kTooManyRows);
  // The place is free again, and a statement that needs little has it.
  EXPECT_EQ(ask(*limited->borrow(), "select count(distinct a.ID) from Orders a where a.ID<9"),
            "i8");
  EXPECT_NO_THROW(database_->borrow()->open(sql)->getRows(10));
}

// The engine does not ask while one of our functions works.
TEST_P(Guarded, ALongFunctionEndsWithItsStatement) {
  context_.rights = kListed;
  const std::string text = "replace(replicate('a',8000),'a',replicate('a',100))";
  const std::string searches[] = {
      text + " like '%'+replicate('[ab]',1900)+'c%'",
      text + " like replicate('%a',2000)+'[' + replicate('b',3000)+']%'"};
  for (const std::string& search : searches) {
    Lease lease = database_->borrow();
    lease->setContext(&context_);
    lease->setCommandTimeout(std::chrono::milliseconds(100));
    const auto begin = std::chrono::steady_clock::now();
    const std::string sql = "select count(*) from Orders where " + search + " or " + search;
    EXPECT_EQ(errorOf([&] { lease->open(sql); }).number(), kTimeout) << search;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  }
  // What is looked for may be long as well: the time grows with the sum.
  EXPECT_EQ(asked(kListed, "select charindex(replicate('a',7999)+'b'," + text + ")"), "i0");
  EXPECT_EQ(asked(kListed, "select len(replace(" + text + ",replicate('a',3999)+'b','c'))"),
            "i800000");
}

TEST_P(Guarded, AStatementEndsWhenNobodyWaitsForIt) {
  int questions = 0;
  context_.rights = kListed;
  context_.isWanted = [&] { return ++questions < 3; };
  Lease lease = database_->borrow();
  lease->setContext(&context_);
  std::string endless = "select count(*) from Orders";
  for (int i = 0; i < 34; ++i) endless += ",Orders a" + std::to_string(i);
  EXPECT_EQ(errorOf([&] { lease->open(endless); }).number(), kCancelled);
  EXPECT_EQ(questions, 3);
  context_.isWanted = nullptr;
  EXPECT_EQ(ask(*lease, "select 1"), "i1");
}

// Whoever has asked for a write gets it, although he has left: while it waits for another's lock
// nobody is asked.
TEST_P(Guarded, AWriteIsNotEndedForAClientThatLeft) {
  context_.rights = {.reads = {}, .writes = {Business}};
  context_.rights.readsListedOnly = false;
  context_.isWanted = [] { return false; };
  const auto other = home_.other();
  other->run(isSqlite() ? "BEGIN IMMEDIATE" : "BEGIN;LOCK TABLE Orders IN SHARE MODE");
  std::thread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    other->run("COMMIT");
  });
  Lease lease = database_->borrow();
  lease->setContext(&context_);
  EXPECT_NO_THROW(lease->execute("update Orders set Amount=5 where ID=1"));
  release.join();
}

}  // namespace
}  // namespace tarlo::database::test
