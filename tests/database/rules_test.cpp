// Keys, computed columns, procedures, many literals and texts that fit their column, end to end.

#include "business.h"

namespace tarlo::database::test {
namespace {

TEST_F(Business, ProceduresAreCalledByName) {
  expectRows({
      {"declare @r varchar(50);exec P 31,@r out;select @r", "p31"},
      {"declare @r varchar(50) exec p 'a', @r output select @r as x", "pa"},
      {"declare @r varchar(50);exec Q 31,@r out;select @r", "refused"},
  });
}

TEST_F(Business, ComputedColumnsAreReadAndNeverWritten) {
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

TEST_F(Business, IdentityInsertIsForOneTableAtATime) {
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

TEST_F(Business, CompositeKeysAreUnique) {
  EXPECT_EQ(errorOf([&] { lease_->execute("INSERT Line (A, B) VALUES (2, 1)"); }).number(),
            kConstraint);
  expectRows({{"UPDATE Line SET N = 5 WHERE A = 2 AND B = 1", ""},
              {"SELECT A, B, N FROM Line", "1,9,3;2,1,5;2,2,1"}});
}

TEST_F(Business, MoreLiteralsThanParameters) {
  std::string list = "'1'";
  for (int i = 2; i <= 3000; ++i) list += "," + std::to_string(i);
  EXPECT_EQ(rows("SELECT ID FROM Contract WHERE ID IN (" + list + ")"), "1;2;3;4");
  EXPECT_EQ(rows("SELECT ID, 'it''s' FROM Contract WHERE NOT ID IN (" + list + ") OR ID = '3'"),
            "3,it's");
  // Of the same shape, with other values.
  list.replace(0, 3, "'9'");
  EXPECT_EQ(rows("SELECT ID FROM Contract WHERE ID IN (" + list + ")"), "2;3;4");
}

TEST_F(Business, TextsFitTheirColumn) {
  const std::string twenty(20, 'x');
  expectRows({
      {"UPDATE Contract SET Title = '" + twenty + "   ' WHERE ID = 1", ""},
      {"SELECT DATALENGTH(Title) FROM Contract WHERE ID = 1", "40"},
      {"UPDATE Contract SET Title = '" + twenty + " y' WHERE ID = 1", "refused"},
      {"UPDATE Contract SET Amount = '2.345', Qty = '' WHERE ID = 1", ""},
      {"SELECT Amount, Qty FROM Contract WHERE ID = 1", "2.35,0"},
  });
}

}  // namespace
}  // namespace tarlo::database::test
