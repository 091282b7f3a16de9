// T-SQL in, values out: the whole way through the front end and SQLite, on a small business.

#include <gtest/gtest.h>

#include "database/database.h"
#include "variant/convert.h"

namespace tarlo::database {
namespace {

constexpr std::string_view kSetup[] = {
    "CREATE TABLE Contract (ID int IDENTITY PRIMARY KEY, Title nvarchar(20), Amount decimal(18,2),"
    " Qty int, CustID int, SignDate datetime, Memo nvarchar(max), Flag int DEFAULT 1)",
    "CREATE TABLE Customer (ID int IDENTITY PRIMARY KEY, Name nvarchar(50), City nvarchar(50))",
    "INSERT INTO Customer (Name, City) VALUES ('Ann', 'Paris'), ('Bob', 'PARIS '), ('Cid', 'Rome')",
    "INSERT INTO Contract (Title, Amount, Qty, CustID, SignDate, Memo) VALUES"
    " ('Alpha ', 1000, 7, 1, '2024-1-5', ''), ('beta', '0.1', 2, 2, '20240105 10:11:12', NULL),"
    " ('Gamma', 2.675, NULL, 2, NULL, '5'), ('delta', 20, '', 3, '2024/3/1', 'x')",
};

class Semantics : public ::testing::Test {
 protected:
  Semantics() : database_(openDatabase("sqlite::memory:")), lease_(database_->borrow()) {
    lease_->allowDdl(true);
    for (const std::string_view sql : kSetup) lease_->execute(sql);
  }

  // Rows joined by ";", values by ","; "refused" for a statement that fails.
  std::string rows(const std::string& sql) {
    try {
      auto records = lease_->open(sql);
      std::string text;
      for (; !records->atEnd(); records->moveNext()) {
        if (!text.empty()) text += ";";
        for (std::size_t i = 0; i < records->fieldCount(); ++i) {
          const Variant value = records->value(i);
          text += (i == 0 ? "" : ",") + (value.isNull() ? "NULL" : variant::toText(value));
        }
      }
      return text;
    } catch (const DatabaseError& error) {
      return std::string("refused");
    }
  }

  struct Row {
    std::string sql;
    std::string expected;
  };
  void expectValues(const std::vector<Row>& expressions) {
    for (const Row& row : expressions) {
      EXPECT_EQ(rows("SELECT " + row.sql), row.expected) << row.sql;
    }
  }
  void expectIds(const std::vector<Row>& conditions) {
    for (const Row& row : conditions) {
      EXPECT_EQ(rows("SELECT ID FROM Contract WHERE " + row.sql), row.expected) << row.sql;
    }
  }

  std::unique_ptr<Database> database_;
  Lease lease_;
};

TEST_F(Semantics, ComparisonsFollowTheHigherKind) {
  expectIds({
      {"Amount * 2 > '100'", "1"},
      {"Qty = ''", "4"},
      {"Qty > '1'", "1;2"},
      {"Title = 'ALPHA'", "1"},
      {"Title IN ('BETA', 'ｇａｍｍａ')", "2;3"},
      {"Title BETWEEN 'ALPHA' AND 'C'", "1;2"},
      {"Memo = ''", "1"},
      {"Memo IS NULL", "2"},
      {"SignDate = '2024-01-05'", "1"},
      {"SignDate >= '2024-1-5 10:00'", "2;4"},
      {"SignDate > ''", "1;2;4"},
      {"Amount = 2.68", "3"},
      {"Amount + Amount + Amount = 0.3", "2"},
      {"Title LIKE '[a-b]%'", "1;2"},
      {"Title NOT LIKE '%A%'", ""},
      {"SignDate LIKE 'jan  5%'", "1;2"},
      {"Qty LIKE '7'", "1"},
      {"CustID IN (SELECT ID FROM Customer WHERE City = 'paris')", "1;2;3"},
      {"EXISTS (SELECT * FROM Customer WHERE ID = Contract.CustID AND Name = 'CID')", "4"},
      {"NOT Qty IN (7)", "2;4"},
      {"1 = 1 AND 1 <> 1", ""},
      {"Qty = '5.5'", "refused"},
      {"SignDate > 'soon'", "refused"},
  });
}

TEST_F(Semantics, OperatorsAndConversions) {
  expectValues({
      {"'a' + 'b' + NULL", "NULL"},
      {"'2' + 3", "5"},
      {"5 & 1 + 1", "2"},
      {"5 ^ 1", "4"},
      {"- -5", "5"},
      {"7 / 2", "3"},
      {"7.0 / 2", "3.5"},
      {"-7 % 3", "-1"},
      {"CASE 'A ' WHEN 'a' THEN 1 ELSE '2' END", "1"},
      {"CAST(3.7 AS int)", "3"},
      {"CAST('abc' AS int)", "refused"},
      {"CAST(Amount AS varchar) FROM Contract WHERE ID = 1", "1000.00"},
      {"CAST(12345 AS varchar(3))", "*"},
      {"CAST('abcdef' AS varchar(3))", "abc"},
      {"CAST(2.5 AS decimal)", "3"},
      {"CAST('2.345' AS decimal(5,2))", "2.35"},
      {"CONVERT(varchar(7), SignDate, 120) FROM Contract WHERE ID = 1", "2024-01"},
      {"CAST('2024-1-5' AS datetime) + 30", "2024-02-04 00:00:00"},
      {"CAST(CAST('2024-1-5' AS datetime) - CAST('2024-1-1' AS datetime) AS int)", "4"},
      {"CAST(1 AS datetime)", "1900-01-02 00:00:00"},
      {"Memo * 2 FROM Contract WHERE ID = 3", "10"},
      {"Memo * 2 FROM Contract WHERE ID = 4", "refused"},
      {"1 / (Qty - 2) FROM Contract WHERE ID = 2", "refused"},
  });
}

TEST_F(Semantics, Functions) {
  expectValues({
      {"CEILING(7)", "7"},
      {"FLOOR(-1.5)", "-2"},
      {"ROUND(2.675, 2)", "2.68"},
      {"ROUND(1234, -2)", "1200"},
      {"ROUND(2.675, 2, 1)", "2.67"},
      {"POWER(2, 3)", "8"},
      {"ABS('-1.5')", "1.5"},
      {"LOG(1)", "0"},
      {"YEAR('2024-1-5')", "2024"},
      {"DATEPART (yy, '2024-1-5')", "2024"},
      {"DATENAME(dw, '2024-1-5')", "星期五"},
      {"DATEDIFF(hh, '2024-1-1 23:59:59', '2024-1-2')", "1"},
      {"DATEADD(m, 1, '2024-1-31')", "2024-02-29 00:00:00"},
      {"ISNULL(Qty, '') FROM Contract WHERE ID = 3", "0"},
      {"COALESCE(NULL, 2)", "2"},
      {"NULLIF('a', 'A')", "NULL"},
      {"IIF(1 = 1, 'y', 'n')", "y"},
      {"LEN('ab ')", "2"},
      {"LEN(123)", "3"},
      {"SUBSTRING('abc', 0, 2)", "a"},
      {"LEFT('abc', 2) + RIGHT('abc', 0)", "ab"},
      {"REPLACE('aBc', 'b', 'x')", "axc"},
      {"STR(3.14159, 6, 2)", "  3.14"},
      {"CHARINDEX('C', 'abc')", "3"},
      {"STUFF('abc', 2, 1, 'X')", "aXc"},
      {"CONCAT('a', NULL, 1)", "a1"},
      {"ISNUMERIC('1e')", "0"},
      {"COUNT(*), COUNT(Qty), COUNT(DISTINCT CustID) FROM Contract", "4,3,3"},
      {"AVG(Qty), SUM(Qty) FROM Contract", "3,9"},
      {"MAX(Title), MIN(Title) FROM Contract", "Gamma,Alpha "},
      {"COUNT(DISTINCT City) FROM Customer", "2"},
  });
}

TEST_F(Semantics, RowOrder) {
  const std::vector<Row> cases = {
      {"SELECT 5, 'e' UNION SELECT -1, '--' UNION SELECT 2, 'b'", "-1,--;2,b;5,e"},
      {"SELECT 5 UNION ALL SELECT 1", "5;1"},
      {"SELECT DISTINCT CustID FROM Contract", "1;2;3"},
      {"SELECT CustID, COUNT(*) FROM Contract GROUP BY CustID", "1,1;2,2;3,1"},
      {"SELECT TOP 2 ID FROM Contract", "1;2"},
      {"SELECT TOP 1 ID FROM Contract ORDER BY CustID DESC", "4"},
      {"SELECT ID FROM Contract ORDER BY Flag", "1;2;3;4"},
      {"SELECT ID FROM Contract ORDER BY Qty", "3;4;2;1"},
      {"SELECT Title AS t FROM Contract ORDER BY t DESC", "Gamma;delta;beta;Alpha "},
      {"SELECT c.ID FROM Contract c, Customer u WHERE c.CustID = u.ID AND u.Name = 'bob' "
       "ORDER BY c.Amount DESC",
       "3;2"},
      {"SELECT Name, (SELECT SUM(Qty) FROM Contract WHERE CustID = Customer.ID) FROM Customer",
       "Ann,7;Bob,2;Cid,0"},
      {"SELECT Name, (SELECT Title FROM Contract WHERE CustID = Customer.ID) FROM Customer",
       "refused"},
      {"SELECT d.x FROM (SELECT TOP 2 Qty AS x FROM Contract ORDER BY ID) d WHERE d.x > 2", "7"},
      {"SELECT u.Name, c.ID FROM Customer u LEFT JOIN Contract c ON c.CustID = u.ID AND c.Qty > 5 "
       "ORDER BY u.ID",
       "Ann,1;Bob,NULL;Cid,NULL"},
  };
  for (const Row& row : cases) EXPECT_EQ(rows(row.sql), row.expected) << row.sql;
}

TEST_F(Semantics, Writes) {
  EXPECT_EQ(rows("insert Customer (Name) values ('Dan');select @@identity as NeoID"), "4");
  EXPECT_EQ(rows("set nocount on insert into Customer (Name) values ('Eve') "
                 "select SCOPE_IDENTITY() as NeoID"),
            "5");
  lease_->execute("UPDATE Contract SET Amount = Amount / 3, Qty = '9' WHERE Title = 'delta'");
  EXPECT_EQ(rows("SELECT Amount, Qty FROM Contract WHERE ID = 4"), "6.67,9");
  lease_->execute(
      "INSERT INTO Contract (Title, Amount) SELECT Name, ID / 3.0 FROM Customer "
      "WHERE ID = 2");
  EXPECT_EQ(rows("SELECT Title, Amount, Flag FROM Contract WHERE ID = 5"), "Bob,0.67,1");
  EXPECT_EQ(rows("UPDATE Contract SET Title = Title + '0123456789012345' WHERE ID = 1"), "refused");
  EXPECT_EQ(rows("INSERT INTO Contract (Title) VALUES ('012345678901234567890')"), "refused");
}

}  // namespace
}  // namespace tarlo::database
