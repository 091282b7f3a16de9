// The order of rows where the statement leaves it open, and the joins and parts that rows come
// from.

#include "business.h"

namespace tarlo::database::test {
namespace {

TEST_P(Business, OrderOfUnionsAndGroups) {
  expectRows({
      {"SELECT 5, 'e' UNION SELECT -1, '--' UNION SELECT 2, 'b'", "-1,--;2,b;5,e"},
      {"SELECT 2, 'b' UNION SELECT 2, 'a' UNION SELECT NULL, 'z'", "NULL,z;2,a;2,b"},
      {"SELECT 5 UNION ALL SELECT 1 UNION ALL SELECT 3", "5;1;3"},
      {"SELECT 5 AS x UNION SELECT 7 ORDER BY x DESC", "7;5"},
      {"SELECT DISTINCT CustID, Flag FROM Contract WHERE ID > 1", "2,1;9,1"},
      {"SELECT DISTINCT City FROM Customer", "Paris;Rome"},
      {"SELECT CustID, SUM(Qty) FROM Contract GROUP BY CustID", "1,7;2,2;9,0"},
      {"SELECT SUM(Qty) FROM Contract GROUP BY CustID", "7;2;0"},
      {"SELECT CustID, COUNT(*) AS n FROM Contract GROUP BY CustID ORDER BY n DESC", "2,2;1,1;9,1"},
  });
}

TEST_P(Business, OrderOfOneTableFollowsItsKey) {
  lease_->execute("UPDATE Contract SET Title = 'moved' WHERE ID = 1");
  expectRows({
      {"SELECT ID FROM Contract", "1;2;3;4"},
      {"SELECT TOP 1 Title FROM Contract", "moved"},
      {"SELECT N FROM Line", "3;2;1"},
      {"SELECT N FROM Line ORDER BY A DESC", "2;1;3"},
      {"SELECT ID FROM Contract ORDER BY Flag", "1;2;3;4"},
      {"SELECT ID FROM Contract ORDER BY Qty", "3;4;2;1"},
      {"SELECT ID FROM Contract ORDER BY Qty DESC", "1;2;4;3"},
      {"SELECT ID AS k, Title AS t FROM Contract WHERE ID < 3 ORDER BY 1 DESC", "2,beta;1,moved"},
      {"SELECT Title AS t FROM Contract ORDER BY t DESC", "moved;Gamma;delta;beta"},
      {"SELECT a.ID FROM Contract a WHERE a.ID < 3 ORDER BY a.Amount", "2;1"},
  });
}

TEST_P(Business, PartsInsideAStatement) {
  expectRows({
      {"SELECT TOP 1 ID FROM Contract UNION SELECT 9", "1;9"},
      {"SELECT 9 UNION ALL SELECT TOP 2 ID FROM Contract", "9;1;2"},
      {"SELECT TOP 1 CustID FROM Contract UNION SELECT '1'", "1"},
      {"SELECT ID FROM Contract WHERE ID = (SELECT TOP 1 ID FROM Contract ORDER BY ID DESC)", "4"},
      {"SELECT (SELECT TOP 2 ID FROM Contract)", "refused"},
      {"SELECT TOP 0 ID FROM Contract", ""},
      {"SELECT d.x FROM (SELECT TOP 2 Qty AS x FROM Contract ORDER BY ID) d WHERE d.x > 2", "7"},
      {"SELECT Name, (SELECT SUM(Qty) FROM Contract WHERE CustID = Customer.ID) FROM Customer",
       "Ann,7;Bob,2;Cid,NULL"},
      {"SELECT Name, (SELECT Title FROM Contract WHERE CustID = Customer.ID) FROM Customer",
       "refused"},
  });
}

TEST_P(Business, Joins) {
  expectRows(
      {
          {"Contract c RIGHT JOIN Customer u ON c.CustID = u.ID ORDER BY u.ID, c.ID",
           "Ann,1;Bob,2;Bob,3;Cid,NULL"},
          {"Customer u LEFT JOIN Contract c ON c.CustID = u.ID AND c.Qty > 5 ORDER BY u.ID",
           "Ann,1;Bob,NULL;Cid,NULL"},
          {"Customer u FULL JOIN Contract c ON c.CustID = u.ID ORDER BY u.ID, c.ID",
           "NULL,4;Ann,1;Bob,2;Bob,3;Cid,NULL"},
          {"Customer u FULL OUTER JOIN Contract c ON 1 = 0 WHERE c.ID = 4", "NULL,4"},
          {"Customer u CROSS JOIN Contract c WHERE c.ID = 1 ORDER BY u.ID", "Ann,1;Bob,1;Cid,1"},
          {"Contract c, Customer u WHERE c.CustID = u.ID AND u.Name = 'bob' ORDER BY c.Amount DESC",
           "Bob,3;Bob,2"},
          {"Customer u, (SELECT ID, CustID FROM Contract WHERE Qty > 1) c WHERE c.CustID = u.ID "
           "ORDER BY c.ID",
           "Ann,1;Bob,2"},
          {"(SELECT 1 AS ID) c, Customer u LEFT JOIN Line l ON l.A = u.ID AND l.B = 9 "
           "WHERE l.N = 3",
           "Ann,1"},
          // An entry's own joins are its own: the outer one begins with nobody of another entry.
          {"(SELECT 7 AS ID) c, Customer v RIGHT JOIN Customer u ON v.ID = u.ID AND v.Name = 'Ann' "
           "WHERE v.ID IS NULL ORDER BY u.ID",
           "Bob,7;Cid,7"},
      },
      "SELECT u.Name, c.ID FROM ");
}

TEST_P(Business, KeysAreLookedUpByTheirIndex) {
  if (!isSqlite()) GTEST_SKIP() << "a server chooses its plan by the size of the tables";
  lease_->execute("CREATE INDEX ByCustomer ON Contract (CustID)");
  Foreigner engine(home_.file());
  for (const char* sql : {
           "SELECT Title FROM Contract WHERE ID = 3",
           "SELECT Title FROM Contract WHERE ID = '3'",
           "SELECT Title FROM Contract WHERE ID IN (1, 3)",
           "SELECT Title FROM Contract WHERE CustID = 2",
           "SELECT N FROM Line WHERE A = 2 AND B = 1",
           "SELECT u.Name FROM Contract c, Customer u WHERE c.CustID = u.ID AND c.ID = 1",
           "UPDATE Contract SET Qty = 1 WHERE ID = 3",
       }) {
    const std::string plan =
        engine.column("EXPLAIN QUERY PLAN " + lease_->explainTranslation(sql), 3);
    EXPECT_EQ(plan.find("SCAN"), std::string::npos) << sql << ": " << plan;
    EXPECT_NE(plan.find("SEARCH"), std::string::npos) << sql << ": " << plan;
  }
}

}  // namespace
}  // namespace tarlo::database::test
