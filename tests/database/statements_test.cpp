// Every statement that the parser's golden files hold, over the platform's tables and a small
// business: what the system sends must run, and what it relies on being refused must be.

#include "database/script.h"
#include "engines.h"
#include "support.h"
#include "support/golden_file.h"
#include "support/schema_files.h"
#include "tsql/limits.h"

namespace tarlo::database::test {
namespace {

const std::string kGolden = TARLO_TEST_DATA "/../tsql/golden/";

constexpr std::string_view kBusiness = R"(
CREATE TABLE Region (ID int PRIMARY KEY, Name nvarchar(50), Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Customer (ID int PRIMARY KEY, City nvarchar(50), RegionID int, Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Orders (ID int PRIMARY KEY, Amount decimal(18,2), CustID int, ShipTo int,
  Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE UserTb_Customer (Zembra_ID int IDENTITY PRIMARY KEY, Name nvarchar(50),
  City nvarchar(50), Kind nvarchar(20), Credit decimal(18,2), Founded datetime, RegionID int,
  Phone nvarchar(20), Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE UserTb_Contract (Zembra_ID int IDENTITY PRIMARY KEY, Title nvarchar(200),
  Amount decimal(18,2), Discount decimal(18,2), Qty int, CustID int, AgentID int,
  SignDate datetime, EndDate datetime, Status int, Memo nvarchar(200), Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE UserTb_Item (Zembra_ID int IDENTITY PRIMARY KEY, ContractID int, Product nvarchar(50),
  Qty int, Price decimal(18,2), Zembra_Flag int DEFAULT 1)
GO
INSERT INTO Region (ID, Name) VALUES (1, 'North')
GO
INSERT INTO Customer (ID, City, RegionID) VALUES (1, 'Paris', 1)
GO
INSERT INTO Orders (ID, Amount, CustID, ShipTo) VALUES (1, 700, 1, 1)
GO
INSERT INTO UserTb_Customer (Name, City, Kind) VALUES ('Ann', 'Paris', 'A')
GO
INSERT INTO UserTb_Contract (Title, Amount, Discount, Qty, CustID, SignDate, EndDate, Status, Memo)
VALUES ('Alpha ', 1000, 10, 7, 1, '2024-1-31', '20240301 10:11:12', 1, ''),
  ('beta', 0.1, 0, 2, 1, NULL, NULL, 0, NULL)
GO
INSERT INTO UserTb_Item (ContractID, Product, Qty, Price) VALUES (1, 'Pen', 3, 2.5), (1, 'Ink', 1, 9)
)";

class Statements : public OnEveryEngine {
 protected:
  Statements() : database_(home_.open()) {
    database_->addProcedure("Zembra_WorkFlowInstance_IsExistsTempMenu",
                            [](std::span<const Variant>) { return Variant("0"); });
    Lease lease = database_->borrow();
    lease->allowDdl(true);
    for (const std::string& script : tarlo::testing::platformTables()) runScript(*lease, script);
    runScript(*lease, tarlo::testing::schemaFile("tables/90_base_rows.sql"));
    runScript(*lease, kBusiness);
    lease->allowDdl(false);
  }

  // "" or the error.
  std::string run(const std::string& sql) {
    try {
      rowsOf(sql);
      return "";
    } catch (const DatabaseError& error) {
      return error.what();
    }
  }
  std::string rowsOf(const std::string& sql) { return ask(*database_->borrow(), sql); }
  void expectTaken(const std::string& sql) { EXPECT_EQ(run(sql), "") << sql; }

 private:
  std::unique_ptr<Database> database_;
};

TARLO_ON_EVERY_ENGINE(Statements);

TEST_P(Statements, OfThePlatformSchemesAndControlsRun) {
  for (const char* file : {"platform.sql", "business.sql"}) {
    for (const std::string& sql : tarlo::testing::goldenEntries(kGolden + file)) expectTaken(sql);
  }
}

TEST_P(Statements, WithComputedFieldsRun) {
  for (const std::string& expression : tarlo::testing::goldenLines(kGolden + "expressions.txt")) {
    expectTaken("select " + expression + " as [v] from [UserTb_Contract]");
  }
}

// As long as the parser takes them: filters of hundreds of conditions must not meet a bound of the
// engine.
TEST_P(Statements, WithLongChainsRun) {
  const auto repeated = [](std::string_view text) {
    std::string all;
    for (std::size_t i = 0; i < tsql::kMaxChain; ++i) all += text;
    return all;
  };
  expectTaken("select ID from Orders where Amount > '1'" + repeated(" and Amount <> '5'"));
  expectTaken("select ID from Orders where Amount > '1'" + repeated(" or [Orders].[CustID] = 1"));
  expectTaken("select City" + repeated("+City") + " from Customer");
  expectTaken("select 10" + repeated("-ID") + " from Customer");
  EXPECT_EQ(rowsOf("select (1000-(5-2))" + repeated("-1") + "*2%9"), "i96");
}

TEST_P(Statements, ThatMustFailAreRefused) {
  for (const char* file : {"refused.sql", "unresolved.sql"}) {
    for (const std::string& sql : tarlo::testing::goldenEntries(kGolden + file)) {
      EXPECT_NE(run(sql), "") << "taken: " << sql;
    }
  }
}

}  // namespace
}  // namespace tarlo::database::test
