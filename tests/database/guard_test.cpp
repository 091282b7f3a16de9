// What a borrower's statements may touch and cost, and that the engine refuses it without the front
// end's help.

#include <chrono>
#include <thread>

#include "database/sqlite/connection.h"
#include "database/statement_check.h"
#include "support.h"
#include "variant/error_state.h"

namespace tarlo::database::test {
namespace {

using enum TableGroup;

class Guarded : public ::testing::Test {
 protected:
  Guarded() {
    Lease lease = database_->borrow();
    lease->allowDdl(true);
    for (const char* statement :
         {"create table Zembra_DataDict_Table (DDT_Name nvarchar(128), Zembra_Flag int)",
          "create table Zembra_User (User_ID int identity primary key, User_Name nvarchar(50))",
          "create table Zembra_Unheard (ID int)",
          "create table Tarlo_Credential (Hash nvarchar(9))",
          "create table Orders (ID int identity primary key, Amount int, Note nvarchar(max))",
          "create table Payroll (ID int, Salary int)",
          "insert into Zembra_DataDict_Table values ('Orders',1),('Payroll',0)",
          "insert into Orders (Amount,Note) values (1,'a'),(2,'b')",
          "insert into Payroll values (1,100)", "insert into Zembra_User values ('Ann')"}) {
      lease->execute(statement);
    }
    context_.listedTables = "select DDT_Name from Zembra_DataDict_Table where Zembra_Flag <> 0";
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
      return "refused: " + error.description();
    }
  }

  const TempFolder folder_;
  const std::unique_ptr<Database> database_ =
      openDatabase("sqlite:" + folder_.file(), {.create = true});
  StatementContext context_;
};

constexpr StatementRights kListed = {.reads = {Business}, .writes = {}};
constexpr StatementRights kUsers = {.reads = {Organisation}, .writes = {}};
constexpr StatementRights kWritesUsers = {.reads = {}, .writes = {Organisation}};

TEST_F(Guarded, HoldsAStatementToItsTables) {
  struct {
    StatementRights rights;
    const char* sql;
    const char* answer;
  } const rows[] = {
      {kListed, "select Amount from Orders where ID=2", "i2"},
      {kListed, "select Salary from Payroll",
       "refused: line 1, column 20: table Payroll may not be read here"},
      {kListed, "select Amount from Orders where ID in (select User_ID from Zembra_User)",
       "refused: line 1, column 60: table Zembra_User may not be read here"},
      {kListed, "select 1 from Orders union select 2 from Zembra_Unheard",
       "refused: line 1, column 42: table Zembra_Unheard may not be read here"},
      {kListed, "select Hash from TARLO_credential",
       "refused: line 1, column 18: unknown table Tarlo_Credential"},
      {kListed, "update Orders set Amount=9",
       "refused: line 1, column 1: table Orders may not be written here"},
      {kListed, "insert into Orders (Amount) select Salary from Payroll",
       "refused: line 1, column 1: table Orders may not be written here"},
      {kListed, "set identity_insert Orders on",
       "refused: line 1, column 1: table Orders may not be written here"},
      {kUsers, "select User_Name from Zembra_User", "tAnn"},
      {kUsers, "select Amount from Orders",
       "refused: line 1, column 20: table Orders may not be read here"},
      {kUsers, "update Zembra_User set User_Name='x'",
       "refused: line 1, column 1: table Zembra_User may not be written here"},
      {kWritesUsers, "update Zembra_User set User_Name=(select max(Note) from Orders)",
       "refused: line 1, column 57: table Orders may not be read here"},
      {kWritesUsers, "insert into Zembra_User (User_Name) values ('Bob')", "i2"},
      {{}, "select 1", "i1"},
      {{},
       "select Amount from Orders",
       "refused: line 1, column 20: table Orders may not be read here"},
  };
  for (const auto& [rights, sql, answer] : rows) {
    EXPECT_EQ(asked(rights, sql), answer) << sql;
  }
  EXPECT_EQ(ask(*database_->borrow(), "select User_Name from Zembra_User order by User_ID"),
            "tAnn|tBob");
}

TEST_F(Guarded, JudgesAKnownStatementByWhoeverRunsItNow) {
  const char* sql = "select User_Name from Zembra_User where User_ID=1";
  EXPECT_EQ(asked(kUsers, sql), "tAnn");
  // The place is that of this text, though another of its shape was translated.
  EXPECT_EQ(asked(kListed, "select User_Name from   Zembra_User where User_ID=1"),
            "refused: line 1, column 25: table Zembra_User may not be read here");
  EXPECT_EQ(asked(kListed, sql),
            "refused: line 1, column 23: table Zembra_User may not be read here");
  EXPECT_EQ(asked(kUsers, sql), "tAnn");
}

TEST_F(Guarded, SeesWhatTheDictionaryLists) {
  const char* sql = "select Salary from Payroll";
  EXPECT_TRUE(asked(kListed, sql).starts_with("refused"));
  database_->borrow()->execute("update Zembra_DataDict_Table set Zembra_Flag=1");
  EXPECT_EQ(asked(kListed, sql), "i100");
  // What is listed no longer may be read for a moment yet.
  Foreigner(folder_.file()).run("update Zembra_DataDict_Table set Zembra_Flag=0");
  std::this_thread::sleep_for(std::chrono::milliseconds(1'100));
  EXPECT_TRUE(asked(kListed, sql).starts_with("refused"));
  const std::vector<std::string> more = {"payroll", "Zembra_User", "Tarlo_Credential"};
  context_.alsoReadable = more;
  EXPECT_EQ(asked(kListed, sql), "i100");
  EXPECT_EQ(asked(kListed, "select User_Name from Zembra_User"), "tAnn");
  EXPECT_TRUE(asked(kListed, "update Payroll set Salary=1").starts_with("refused"));
  EXPECT_TRUE(asked(kListed, "select Hash from Tarlo_Credential").starts_with("refused"));
}

TEST_F(Guarded, TellsTheLogWhatWasRefused) {
  struct Log : RefusalLog {
    std::string lines;
    void refused(std::string_view statement, std::string_view reason) noexcept override {
      lines.append(statement).append(" | ").append(reason).append("\n");
    }
  } log;
  context_.refusals = &log;
  asked(kListed, "select 1 from Orders");
  asked(kListed, "select 1 from Zembra_User");
  EXPECT_EQ(log.lines,
            "select 1 from Zembra_User | line 1, column 15: table Zembra_User may not be read "
            "here\n");
}

// A front end that saw nothing: what it noted is taken out of the translations that the connection
// will find.
TEST_F(Guarded, TheEngineRefusesByItself) {
  TranslationCache translations;
  ProcedureTable procedures;
  DatabaseFile file(folder_.file());
  SqliteConnection connection(openSqliteFile(folder_.file(), {}, procedures), file, translations,
                              procedures, {});
  const char* const statements[] = {
      "select User_Name from Zembra_User", "update Zembra_User set User_Name='x'",
      "insert into Zembra_User (User_Name) values ('x')", "select Salary from Payroll"};
  for (const char* sql : statements) {
    connection.explainTranslation(sql);
    tsql::Shape shape;
    ASSERT_TRUE(tsql::shapeOf(sql, shape));
    auto blind = std::make_shared<CachedTranslation>(*translations.find(shape));
    blind->translation.touched.clear();
    blind->footprint = {};
    translations.insert(shape, blind);
  }
  context_.rights = kListed;
  for (int round = 0; round < 2; ++round) {
    for (const char* sql : statements) {
      connection.setContext(&context_);
      const DatabaseError error = errorOf([&] { connection.open(sql); });
      EXPECT_EQ(error.number(), kForbidden) << sql << ": " << error.description();
      // Prepared for somebody who may, and kept: the next one may not all the same.
      connection.setContext(nullptr);
      if (round == 0 && std::string_view(sql).starts_with("select")) connection.open(sql);
    }
  }
  EXPECT_EQ(ask(connection, "select User_Name from Zembra_User"), "tAnn");
}

TEST_F(Guarded, RowsAreDeletedOnlyByWhoeverMay) {
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

// A front end that took a DELETE for a SELECT.
TEST_F(Guarded, TheEngineRefusesADeleteByItself) {
  TranslationCache translations;
  ProcedureTable procedures;
  DatabaseFile file(folder_.file());
  SqliteConnection connection(openSqliteFile(folder_.file(), {}, procedures), file, translations,
                              procedures, {});
  const char* sql = "select User_Name from Zembra_User";
  connection.explainTranslation(sql);
  tsql::Shape shape;
  ASSERT_TRUE(tsql::shapeOf(sql, shape));
  auto wrong = std::make_shared<CachedTranslation>(*translations.find(shape));
  wrong->translation.steps = {{tsql::StepRole::Write, "DELETE FROM \"Zembra_User\"", {}}};
  translations.insert(shape, wrong);
  context_.rights = kWritesUsers;
  connection.setContext(&context_);
  EXPECT_EQ(errorOf([&] { connection.execute(sql); }).number(), kForbidden);
  connection.setContext(nullptr);
  EXPECT_EQ(ask(connection, "select count(User_ID) from Zembra_User"), "i1");
}

TEST_F(Guarded, RowsHaveABudget) {
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
}

TEST_F(Guarded, TemporaryFilesHaveALimit) {
  const auto limited = openDatabase("sqlite:" + folder_.file(), {.temporaryBytes = 1 << 20});
  limited->borrow()->execute("insert into Orders (Amount) select a.ID from Orders a,Orders b");
  for (int i = 0; i < 2; ++i) {
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
TEST_F(Guarded, ALongFunctionEndsWithItsStatement) {
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
  EXPECT_EQ(asked(kListed, "select charindex('aab','aaaab')+charindex('abab','ababcabab',2)"),
            "i9");
  EXPECT_EQ(asked(kListed, "select replace('aaaab','aab','x')+replace('aaaa','aa','b')"), "taaxbb");
}

TEST_F(Guarded, AStatementEndsWhenNobodyWaitsForIt) {
  bool isWanted = true;
  int questions = 0;
  context_.rights = kListed;
  context_.isWanted = [&] { return ++questions < 3 && isWanted; };
  Lease lease = database_->borrow();
  lease->setContext(&context_);
  const char* endless =
      "select count(*) from Orders a,Orders b,Orders c,Orders d,Orders e,Orders f,Orders g,Orders "
      "h,"
      "Orders i,Orders j,Orders k,Orders l,Orders m,Orders n,Orders o,Orders p,Orders q,Orders r,"
      "Orders s,Orders t,Orders u,Orders v,Orders w,Orders x,Orders y,Orders z,Orders a1,Orders a2,"
      "Orders a3,Orders a4,Orders a5,Orders a6,Orders a7,Orders a8";
  EXPECT_EQ(errorOf([&] { lease->open(endless); }).number(), kCancelled);
  EXPECT_EQ(questions, 3);
  context_.isWanted = nullptr;
  EXPECT_EQ(ask(*lease, "select 1"), "i1");
}

// Whoever has asked for a write gets it, although he has left: while it waits for another's lock
// nobody is asked.
TEST_F(Guarded, AWriteIsNotEndedForAClientThatLeft) {
  context_.rights = {.reads = {}, .writes = {Business}};
  context_.rights.readsListedOnly = false;
  context_.isWanted = [] { return false; };
  Foreigner other(folder_.file());
  other.run("BEGIN IMMEDIATE");
  std::thread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    other.run("COMMIT");
  });
  Lease lease = database_->borrow();
  lease->setContext(&context_);
  EXPECT_NO_THROW(lease->execute("update Orders set Amount=5 where ID=1"));
  release.join();
}

}  // namespace
}  // namespace tarlo::database::test
