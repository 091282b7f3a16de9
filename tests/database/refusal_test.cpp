// What must come back as an error, whether the front end or the engine at run time finds it, and
// what the error tells.

#include "business.h"

namespace tarlo::database::test {
namespace {

TEST_F(Business, WhatIsWrongComesBack) {
  const char* const cases[] = {
      "select ID from Contract where CustID = ",
      "insert Contract(Qty,Title) values(,127)",
      "select ID from Contract where ID in ()",
      "select CustID from Contract group by ",
      "select ID from [] ",
      "select ID from Contract where Title='x",
      "select ID from Contract where (Title='x' and)",
      "select Title, count(*) from Contract group by CustID",
      "select Title, count(*) from Contract",
      "select count(*) from Contract group by 1",
      "select ID from Contract where count(*) > 1",
      "select sum(Title) from Contract",
      "select avg(SignDate) from Contract",
      "select [Amount]>5 as x from Contract",
      "select ID from Contract where [Qty]",
      "select LENGTH(Title) from Contract",
      "select IFNULL(Qty,0) from Contract",
      "select NOW()",
      "select SUBSTR(Title,1,1) from Contract",
      "select Title || 'x' from Contract",
      "select ID from Contract limit 1",
      "select ID::text from Contract",
      "select ID from Contract where Qty = 'x'",
      "select ID from Contract where Qty = '5.5'",
      "select ID from Contract where SignDate = '2024-13-01'",
      "select \"nosuch\" from Contract",
      "select Memo * 2 from Contract",
      "select 1 from Contract, Contract",
      "select ID from Contract, Customer",
      "select (select ID from Contract) as x",
      "select ID from Customer where ID = (select CustID from Contract)",
      "select distinct Title from Contract order by Qty",
      "select 1, 2 union select 1",
      "select 1/0",
      "select 1 / (ID - 3) from Contract",
      "select 1.5 % (ID - 4) from Contract",
      "select LEFT('a')",
      "select ID from Nowhere",
      "select Nothing from Contract",
      "select ABS()",
      "select CAST(Memo AS datetime) from Contract where ID = 4",
      "select SQRT(-1)",
      "select SUBSTRING('abc', 1, -1)",
      "select CONVERT(varchar(10), SignDate, 77) from Contract",
      "select 2147483647 + CAST('x' AS int)",
      "declare @r varchar(50);exec NoSuch 31,@r out;select @r",
  };
  for (const char* sql : cases) EXPECT_EQ(rows(sql), "refused") << sql;
}

// A trial run executes and reads no rows: the first row must be enough.
TEST_F(Business, ATrialRunStepsOnce) {
  errorOf([&] { lease_->execute("select Memo * 2 from Contract where ID = 4"); });
  errorOf([&] { lease_->execute("select 1 / (ID - 1) from Contract"); });
  lease_->execute("select 1 / (ID - 2) from Contract");  // the second row is never computed
}

TEST_F(Business, ErrorsTellTheStatementAndWhereInIt) {
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
