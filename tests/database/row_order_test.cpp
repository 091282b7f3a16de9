// The order of rows where the statement leaves it open, and the joins and parts that rows come
// from.

#include "business.h"

namespace tarlo::database::test {
namespace {

TEST_F(Business, OrderOfUnionsAndGroups) {
  expectRows({
      {"SELECT 5, 'e' UNION SELECT -1, '--' UNION SELECT 2, 'b'", "-1,--;2,b;5,e"},
      {"SELECT 2, 'b' UNION SELECT 2, 'a' UNION SELECT NULL, 'z'", "NULL,z;2,a;2,b"},
      {"SELECT 5 UNION ALL SELECT 1 UNION ALL SELECT 3", "5;1;3"},
      {"SELECT 5 AS x UNION SELECT 7 ORDER BY x DESC", "7;5"},
      {"SELECT DISTINCT CustID, ID FROM Contract WHERE ID > 1", "2,2;2,3;9,4"},
      {"SELECT CustID, SUM(Qty) FROM Contract GROUP BY CustID", "1,7;2,2;9,0"},
      {"SELECT SUM(Qty) FROM Contract GROUP BY CustID", "7;2;0"},
      {"SELECT CustID, COUNT(*) AS n FROM Contract GROUP BY CustID ORDER BY n DESC", "2,2;1,1;9,1"},
  });
}

TEST_F(Business, OrderOfOneTableFollowsItsKey) {
  lease_->execute("UPDATE Contract SET Title = 'moved' WHERE ID = 1");
  expectRows({
      {"SELECT ID FROM Contract", "1;2;3;4"},
      {"SELECT TOP 1 Title FROM Contract", "moved"},
      {"SELECT N FROM Line", "3;2;1"},
      {"SELECT N FROM Line ORDER BY A DESC", "2;1;3"},
      {"SELECT ID FROM Contract ORDER BY Qty", "3;4;2;1"},
      {"SELECT ID FROM Contract ORDER BY Qty DESC", "1;2;4;3"},
      {"SELECT ID AS k, Title FROM Contract WHERE ID < 3 ORDER BY 1 DESC", "2,beta;1,moved"},
      {"SELECT a.ID FROM Contract a WHERE a.ID < 3 ORDER BY a.Amount", "2;1"},
  });
}

TEST_F(Business, TopInsideTheirPart) {
  expectRows({
      {"SELECT TOP 1 ID FROM Contract UNION SELECT 9", "1;9"},
      {"SELECT 9 UNION ALL SELECT TOP 2 ID FROM Contract", "9;1;2"},
      {"SELECT TOP 1 CustID FROM Contract UNION SELECT '1'", "1"},
      {"SELECT ID FROM Contract WHERE ID = (SELECT TOP 1 ID FROM Contract ORDER BY ID DESC)", "4"},
      {"SELECT TOP 0 ID FROM Contract", ""},
  });
}

TEST_F(Business, Joins) {
  const std::string fields = "SELECT u.Name, c.ID FROM ";
  expectRows(
      {
          {"Contract c RIGHT JOIN Customer u ON c.CustID = u.ID ORDER BY u.ID, c.ID",
           "Ann,1;Bob,2;Bob,3;Cid,NULL"},
          {"Customer u FULL JOIN Contract c ON c.CustID = u.ID ORDER BY u.ID, c.ID",
           "NULL,4;Ann,1;Bob,2;Bob,3;Cid,NULL"},
          {"Customer u FULL OUTER JOIN Contract c ON 1 = 0 WHERE c.ID = 4", "NULL,4"},
          {"Customer u CROSS JOIN Contract c WHERE c.ID = 1 ORDER BY u.ID", "Ann,1;Bob,1;Cid,1"},
          {"Customer u, (SELECT ID, CustID FROM Contract WHERE Qty > 1) c WHERE c.CustID = u.ID "
           "ORDER BY c.ID",
           "Ann,1;Bob,2"},
          {"(SELECT 1 AS ID) c, Customer u LEFT JOIN Line l ON l.A = u.ID AND l.B = 9 "
           "WHERE l.N = 3",
           "Ann,1"},
      },
      fields);
}

TEST_F(Business, KeysAreLookedUpByTheirIndex) {
  lease_->execute("CREATE INDEX ByCustomer ON Contract (CustID)");
  const char* const cases[] = {
      "SELECT Title FROM Contract WHERE ID = 3",
      "SELECT Title FROM Contract WHERE ID = '3'",
      "SELECT Title FROM Contract WHERE ID IN (1, 3)",
      "SELECT Title FROM Contract WHERE CustID = 2",
      "SELECT N FROM Line WHERE A = 2 AND B = 1",
      "SELECT u.Name FROM Contract c, Customer u WHERE c.CustID = u.ID AND c.ID = 1",
      "UPDATE Contract SET Qty = 1 WHERE ID = 3",
  };
  sqlite3* raw = nullptr;
  const TempFolder folder;
  {
    OpenOptions creating;
    creating.create = true;
    const auto file = openDatabase("sqlite:" + folder.file(), creating);
    Lease lease = borrowWithDdl(*file);
    for (const char* sql :
         {"CREATE TABLE Contract (ID int IDENTITY PRIMARY KEY, Title nvarchar(20), Qty int,"
          " CustID int)",
          "CREATE TABLE Customer (ID int IDENTITY PRIMARY KEY, Name nvarchar(50))",
          "CREATE TABLE Line (B int, A int, N int, PRIMARY KEY (A, B))",
          "CREATE INDEX ByCustomer ON Contract (CustID)"}) {
      lease->execute(sql);
    }
  }
  ASSERT_EQ(sqlite3_open(folder.file().c_str(), &raw), SQLITE_OK);
  for (const char* sql : cases) {
    const std::string plan = "EXPLAIN QUERY PLAN " + lease_->explainTranslation(sql);
    sqlite3_stmt* statement = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(raw, plan.c_str(), -1, &statement, nullptr), SQLITE_OK)
        << sqlite3_errmsg(raw) << plan;
    int searches = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
      const std::string step = reinterpret_cast<const char*>(sqlite3_column_text(statement, 3));
      EXPECT_EQ(step.find("SCAN"), std::string::npos) << sql << ": " << step;
      searches += step.starts_with("SEARCH") ? 1 : 0;
    }
    EXPECT_GT(searches, 0) << sql;
    sqlite3_finalize(statement);
  }
  sqlite3_close(raw);
}

}  // namespace
}  // namespace tarlo::database::test
