#pragma once
// A small business, for tests that send T-SQL in and look at what comes out.

#include "engines.h"
#include "support.h"

namespace tarlo::database::test {

struct Answer {
  std::string sql;
  std::string expected;
};

class Business : public OnEveryEngine {
 protected:
  Business() {
    database_->addProcedure("P", [](std::span<const Variant> arguments) {
      return Variant("p" + variant::toText(arguments[0]));
    });
    lease_->allowDdl(true);
    executeAll(
        *lease_,
        {"CREATE TABLE Contract (ID int IDENTITY PRIMARY KEY, Title nvarchar(20),"
         " Amount decimal(18,2), Qty int, CustID int, SignDate datetime, Memo nvarchar(max),"
         " Flag int DEFAULT 1)",
         "CREATE TABLE Customer (ID int IDENTITY PRIMARY KEY, Name nvarchar(50), City "
         "nvarchar(50))",
         "CREATE TABLE Line (B int, A int, N int, PRIMARY KEY (A, B))",
         "INSERT INTO Customer (Name, City) VALUES ('Ann', 'Paris'), ('Bob', 'PARIS '),"
         " ('Cid', 'Rome')",
         "INSERT INTO Contract (Title, Amount, Qty, CustID, SignDate, Memo) VALUES"
         " ('Alpha ', 1000, 7, 1, '2024-1-5', ''), ('beta', '0.1', 2, 2, '20240105 10:11:12', "
         "NULL), ('Gamma', 2.675, NULL, 2, NULL, '5'), ('delta', 20, '', 9, '2024/3/1', 'x')",
         "INSERT INTO Line (B, A, N) VALUES (2, 2, 1), (1, 2, 2), (9, 1, 3)"});
  }

  // Rows joined by ";", values by ","; "refused" for a statement that fails, wherever it does.
  std::string rows(const std::string& sql) {
    try {
      const auto records = lease_->open(sql);
      std::string text;
      for (; !records->atEnd(); records->moveNext()) {
        if (!text.empty()) text += ";";
        for (std::size_t i = 0; i < records->fieldCount(); ++i) {
          const Variant value = records->value(i);
          text += (i == 0 ? "" : ",") + (value.isNull() ? "NULL" : variant::toText(value));
        }
      }
      return text;
    } catch (const DatabaseError&) {
      return "refused";
    }
  }
  void expectRows(const std::vector<Answer>& answers, const std::string& before = {}) {
    for (const auto& [sql, expected] : answers) EXPECT_EQ(rows(before + sql), expected) << sql;
  }

  const std::unique_ptr<Database> database_ = home_.open();
  Lease lease_ = database_->borrow();
};

}  // namespace tarlo::database::test
