// What execute() and open() promise, on rows of every kind.

#include "database/script.h"
#include "engines.h"
#include "support.h"
#include "support/errors.h"

namespace tarlo::database::test {
namespace {

class Contract : public OnEveryEngine {
 protected:
  Contract() {
    connection->allowDdl(true);
    executeAll(*connection,
               {"create table Kinds (ID int identity primary key, Name nvarchar(50), Amount "
                "decimal(18,2), Ratio float, Made datetime, Flag int default 1)",
                "create table Plain (Code int, Name nvarchar(50))"});
    connection->allowDdl(false);
  }
  std::unique_ptr<Database> database = home_.open();
  Lease connection = database->borrow();
};

TEST_P(Contract, KindsAndTitlesFollowTheStatement) {
  connection->execute(
      "insert into Kinds(Name,Amount,Ratio,Made,Flag) values('a''b','12.50',0.5,'2024-1-5',"
      "2147483647)");
  connection->execute("insert into Kinds(Name,Flag) values('',null)");
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"select id, NAME, [Amount], Ratio, Made, Flag from Kinds", "id,NAME,Amount,Ratio,Made,Flag",
       "i1,ta'b,n12.5,f0.5,d2024-01-05 00:00:00,i2147483647|i2,t,null,null,null,null"},
      {"select Amount*2 as [Twice.x], count(*) from Kinds where ID=1 group by Amount*2", "Twice.x,",
       "n25,i1"},
      {"select Amount a, Amount a from Kinds where 1=0", "a,a", ""},
      {"select cast(Flag as float)*2 as big from Kinds where ID=1", "big", "f4294967294"},
  };
  for (const auto& [sql, titles, rows] : cases) {
    auto recordset = connection->open(sql);
    std::string seen;
    for (std::size_t i = 0; i < recordset->fieldCount(); ++i) {
      seen += (i ? "," : "") + recordset->fieldName(i);
    }
    EXPECT_EQ(seen, titles) << sql;
    EXPECT_EQ(rowsText(*recordset), rows) << sql;
  }
}

TEST_P(Contract, GetRowsGivesColumnAndRowOrEmpty) {
  connection->execute("insert into Plain(Code,Name) values(1,'n'),(2,'n'),(3,'n')");
  const Variant all = connection->open("select Code,Name from Plain order by Code")->getRows();
  EXPECT_EQ(all.array().upperBound(1), 1);
  EXPECT_EQ(all.array().upperBound(2), 2);
  EXPECT_EQ(cellText(all.array().at(0, 2)), "i3");
  auto parts = connection->open("select Code from Plain order by Code");
  EXPECT_EQ(parts->getRows(2).array().upperBound(2), 1);
  EXPECT_EQ(parts->getRows().array().upperBound(2), 0);
  EXPECT_TRUE(parts->getRows().isEmpty());
  EXPECT_TRUE(connection->open("select Code from Plain where 1=0")->getRows().isEmpty());
}

TEST_P(Contract, FieldsAreFoundByTitleOrRefused) {
  auto rows = connection->open("select 7 as NeoID, 8 as neoid");
  EXPECT_EQ(cellText(rows->value("NEOID")), "i7");
  using testing::errorOf;
  EXPECT_EQ(errorOf([&] { rows->value("other"); }), kNoSuchField);
  EXPECT_EQ(errorOf([&] { rows->value(std::size_t{2}); }), kNoSuchField);
  rows->moveNext();
  EXPECT_EQ(errorOf([&] { rows->value(std::size_t{0}); }), 3021);
  EXPECT_EQ(errorOf([&] { rows->moveNext(); }), 3021);
}

TEST_P(Contract, InsertGivesItsIdentityOnTheRowPathOnly) {
  EXPECT_EQ(ask(*connection, "insert into Kinds(Name) values('x')"), "i1");
  connection->execute("insert into Kinds(Name) values('y')");
  EXPECT_EQ(ask(*connection, "insert into Kinds(Name) values('z') select @@identity as NeoID"),
            "i3");
  for (const char* sql :
       {"insert into Plain(Code) values(1)", "update Kinds set Flag=2", "set nocount on"}) {
    auto rows = connection->open(sql);
    EXPECT_EQ(rows->fieldCount(), 0u) << sql;
    EXPECT_TRUE(rows->atEnd()) << sql;
  }
  EXPECT_EQ(ask(*connection, "select count(*) from Kinds where Flag=2"), "i3");
}

TEST_P(Contract, RefusedStatementsChangeNothingAndSayWhere) {
  connection->execute("insert into Plain(Code,Name) values(1,'a')");
  const std::pair<const char*, const char*> cases[] = {
      {"select Code from Plain where", "line 1"},
      {"update Plain set Code='5.5'", "line 1, column"},
      {"update Plain set\nCode='x'", "line 2, column 6"},
      {"delete from Plain", "line 1"},
      {"create table More (a int)", "line 1"},
      {"select Code/0 from Plain", ""},
      {"select (select Code from Plain union all select 2) from Plain", ""},
  };
  // Twice: the second time the shape of most is known.
  for (int round = 0; round < 2; ++round) {
    for (const auto& [sql, part] : cases) {
      const auto error = errorOf([&, &text = sql] { connection->execute(text); });
      EXPECT_EQ(error.number(), kStatementFailed) << sql;
      EXPECT_NE(error.description().find(part), std::string::npos) << error.description();
    }
    connection->execute("update Plain set Code='1'");
    connection->execute("update Plain set\nCode='1'");
  }
  EXPECT_EQ(ask(*connection, "select Code,Name from Plain"), "i1,ta");
}

TEST_P(Contract, TransactionsKeepAllOrNothing) {
  {
    const Connection::Transaction left(*connection);
    connection->execute("insert into Plain(Code) values(1)");
    errorOf([&] { connection->execute("insert into Nowhere(Code) values(1)"); });
  }
  EXPECT_EQ(ask(*connection, "select count(*) from Plain"), "i0");
  Connection::Transaction kept(*connection);
  connection->execute("insert into Plain(Code) values(2)");
  kept.commit();
  EXPECT_EQ(ask(*connection, "select Code from Plain"), "i2");
}

TEST_P(Contract, OneTextMayBeOpenTwice) {
  connection->execute("insert into Plain(Code,Name) values(1,'same'),(2,'same'),(3,'same')");
  std::string pairs;
  const std::string sql = "select Code from Plain where Name='same' order by Code";
  for (auto outer = connection->open(std::string(sql)); !outer->atEnd(); outer->moveNext()) {
    pairs += cellText(outer->value(std::size_t{0})) + ":" + ask(*connection, sql) + " ";
  }
  EXPECT_EQ(pairs, "i1:i1|i2|i3 i2:i1|i2|i3 i3:i1|i2|i3 ");
}

TEST_P(Contract, StatementsTogetherGiveTheirRowsInOrder) {
  connection->execute("insert into Plain(Code,Name) values(1,'a'),(2,'b')");
  std::vector<std::string_view> statements = {
      "select Name from Plain where Code=2", "update Plain set Name='c' where Code=1",
      "select count(*) from Plain where Name='x'", "select Name from Plain where Code=1"};
  for (int i = 0; i < 200; ++i) statements.push_back(statements[0]);
  const auto all = connection->openAll(statements);
  ASSERT_EQ(all.size(), statements.size());
  EXPECT_EQ(rowsText(*all[0]), "tb");
  EXPECT_EQ(all[1]->fieldCount(), 0u);
  EXPECT_EQ(rowsText(*all[2]), "i0");
  EXPECT_EQ(rowsText(*all.back()), "tb");
  const std::string_view wrong[] = {"select Code from Plain",
                                    "select 1/(Code-1) from Plain where Code=1"};
  const auto error = errorOf([&] { connection->openAll(wrong); });
  EXPECT_EQ(error.native().statement, wrong[1]);
  EXPECT_EQ(ask(*connection, "select Name from Plain order by Code"), "tc|tb");
}

TARLO_ON_EVERY_ENGINE(Contract);

TEST(Scripts, AreCutAtGoLines) {
  const auto batches =
      splitScript("\xEF\xBB\xBF\r\n\r\nselect 1\r\n go \r\nGO\n\nselect 'GO'\n;go x");
  ASSERT_EQ(batches.size(), 2u);
  EXPECT_EQ(batches[0].text, "select 1\r\n");
  EXPECT_EQ(batches[0].firstLine, 3u);
  EXPECT_EQ(batches[1].text, "select 'GO'\n;go x");
  EXPECT_EQ(batches[1].firstLine, 7u);
  EXPECT_TRUE(splitScript(" \n GO").empty());
}

TEST_P(Contract, ScriptsStopAtTheFirstRefusedBatch) {
  const auto error = errorOf([&] {
    runScript(*connection,
              "insert into Plain(Code) values(1)\nGO\n\ninsert into Plain(Codes) values(2)\nGO\n"
              "insert into Plain(Code) values(3)");
  });
  EXPECT_TRUE(error.description().starts_with("line 4: ")) << error.description();
  EXPECT_EQ(ask(*connection, "select Code from Plain"), "i1");
}

}  // namespace
}  // namespace tarlo::database::test
