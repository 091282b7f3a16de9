// What must come back as an error, whether the front end or the engine at run time finds it, and
// what the error tells.

#include "business.h"

namespace tarlo::database::test {
namespace {

// What the front end cannot see; what it refuses is in the parser's golden files.
TEST_F(Business, WhatIsWrongOnlyWhenItRunsComesBack) {
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
