// Keys, computed columns, procedures, many literals, texts that fit their column, and what comes
// back as an error when the statement runs.

#include "business.h"

namespace tarlo::database::test {
namespace {

TEST_P(Business, ProceduresAreCalledByName) {
  expectRows({
      {"declare @r varchar(50);exec P 31,@r out;select @r", "p31"},
      {"declare @r varchar(50) exec p 'a', @r output select @r as x", "pa"},
      {"declare @r varchar(50);exec Q 31,@r out;select @r", "refused"},
  });
}

TEST_P(Business, ComputedColumnsAreReadAndNeverWritten) {
  lease_->execute(
      "CREATE TABLE Kind (DDT_ID int IDENTITY PRIMARY KEY, Name nvarchar(9), "
      "Zembra_ID AS DDT_ID)");
  expectRows({
      {"INSERT Kind (Name) VALUES ('a'), ('b') SELECT @@IDENTITY", "2"},
      {"SELECT Zembra_ID, Name FROM Kind WHERE Zembra_ID = 2", "2,b"},
      {"SELECT * FROM Kind WHERE Zembra_ID > 1", "2,b,2"},
      {"UPDATE Kind SET Zembra_ID = 7", "refused"},
      {"INSERT Kind (Name, Zembra_ID) VALUES ('c', 9)", "refused"},
      {"SELECT COUNT(*) FROM Kind", "2"},
  });
}

TEST_P(Business, IdentityInsertIsForOneTableAtATime) {
  const auto refused =
      errorOf([&] { lease_->execute("INSERT Customer (ID, Name) VALUES (40, 'x')"); });
  EXPECT_EQ(refused.number(), kStatementFailed);
  EXPECT_EQ(refused.native().sqlState, "42000");
  expectRows({
      {"SET IDENTITY_INSERT Customer ON", ""},
      {"INSERT customer (id, Name) VALUES (40, 'x') SELECT @@IDENTITY", "40"},
      {"INSERT Contract (ID, Title) VALUES (40, 'x')", "refused"},
      {"SET IDENTITY_INSERT Contract ON", "refused"},
      {"INSERT Contract (ID, Title) VALUES (40, 'x')", "refused"},
      {"SET IDENTITY_INSERT Customer OFF", ""},
      {"INSERT Customer (ID, Name) VALUES (41, 'x')", "refused"},
      {"INSERT Customer (Name) VALUES ('y') SELECT @@IDENTITY", "41"},
      {"SET IDENTITY_INSERT Contract ON", ""},
      {"INSERT Contract (ID, Title) VALUES (40, 'x')", "40"},
  });
}

TEST_P(Business, CompositeKeysAreUnique) {
  EXPECT_EQ(errorOf([&] { lease_->execute("INSERT Line (A, B) VALUES (2, 1)"); }).number(),
            kConstraint);
  expectRows({{"UPDATE Line SET N = 5 WHERE A = 2 AND B = 1", ""},
              {"SELECT A, B, N FROM Line", "1,9,3;2,1,5;2,2,1"}});
}

TEST_P(Business, MoreLiteralsThanParameters) {
  std::string list = "'1'";
  for (int i = 2; i <= 3000; ++i) list += "," + std::to_string(i);
  EXPECT_EQ(rows("SELECT ID FROM Contract WHERE ID IN (" + list + ")"), "1;2;3;4");
  EXPECT_EQ(rows("SELECT ID, 'it''s' FROM Contract WHERE NOT ID IN (" + list + ") OR ID = '3'"),
            "3,it's");
  // Of the same shape, with other values.
  list.replace(0, 3, "'9'");
  EXPECT_EQ(rows("SELECT ID FROM Contract WHERE ID IN (" + list + ")"), "2;3;4");
}

TEST_P(Business, TextsFitTheirColumn) {
  const std::string twenty(20, 'x');
  expectRows({
      {"UPDATE Contract SET Title = '" + twenty + "   ' WHERE ID = 1", ""},
      {"SELECT DATALENGTH(Title) FROM Contract WHERE ID = 1", "40"},
      {"UPDATE Contract SET Title = '" + twenty + " y' WHERE ID = 1", "refused"},
      {"UPDATE Contract SET Amount = '2.345', Qty = '' WHERE ID = 1", ""},
      {"SELECT Amount, Qty FROM Contract WHERE ID = 1", "2.35,0"},
  });
}

// What the front end cannot see; what it refuses is in the parser's golden files.
TEST_P(Business, WhatIsWrongOnlyWhenItRunsComesBack) {
  for (const char* sql : {
           "select Memo * 2 from Contract",
           "select (select ID from Contract) as x",
           "select ID from Customer where ID = (select CustID from Contract)",
           "select 1 / (ID - 3) from Contract",
           "select 1.5 % (ID - 4) from Contract",
           "select CAST(Memo AS datetime) from Contract where ID = 4",
           "select SQRT(-1)",
           "select SUBSTRING('abc', 1, -1)",
           "select 2147483647 + CAST('x' AS int)",
       }) {
    EXPECT_EQ(rows(sql), "refused") << sql;
  }
}

// A trial run executes and reads no rows: the first row must be enough.
TEST_P(Business, ATrialRunStepsOnce) {
  errorOf([&] { lease_->execute("select Memo * 2 from Contract where ID = 4"); });
  errorOf([&] { lease_->execute("select 1 / (ID - 1) from Contract"); });
  // The second row is never computed. A server may compute it while it sorts.
  if (isSqlite()) lease_->execute("select 1 / (ID - 2) from Contract");
}

TEST_P(Business, ErrorsTellTheStatementAndWhereInIt) {
  const std::string wrong = "select ID\nfrom Contract where Qty = 'x'";
  const auto refused = errorOf([&] { lease_->execute(wrong); });
  EXPECT_EQ(refused.native().statement, wrong);
  EXPECT_TRUE(refused.native().text.starts_with("line 2, column 27: ")) << refused.native().text;
  // The same shape again: the position is that of this text.
  lease_->execute("select ID\nfrom Contract where Qty =   '1'");
  const auto again =
      errorOf([&] { lease_->execute("select ID\nfrom Contract where Qty =   'y'"); });
  EXPECT_TRUE(again.native().text.starts_with("line 2, column 29: ")) << again.native().text;

  const auto running =
      errorOf([&] { lease_->execute("select Memo * 2 from Contract where ID=4"); });
  EXPECT_EQ(running.native().statement, "select Memo * 2 from Contract where ID=4");
  const auto reading =
      errorOf([&] { lease_->open("select 1 / (ID - 2) from Contract")->getRows(); });
  EXPECT_NE(reading.native().statement.find("Contract"), std::string::npos);

  std::string text(3 * DatabaseError::kMaxStatementBytes, 'x');
  const auto cut = errorOf([&] { lease_->execute("selec '" + text); });
  EXPECT_EQ(cut.native().statement.size(), DatabaseError::kMaxStatementBytes);
  text.clear();
  for (int i = 0; i < 3000; ++i) text += "字";
  const auto whole = errorOf([&] { lease_->execute("selec '" + text); });
  EXPECT_LE(whole.native().statement.size(), DatabaseError::kMaxStatementBytes);
  EXPECT_TRUE(whole.native().statement.ends_with("字"));
}

}  // namespace
}  // namespace tarlo::database::test
