// Keys, computed columns, procedures, many literals and the functions' finer rules, end to end.

#include "business.h"

namespace tarlo::database::test {
namespace {

TEST_F(Business, ProceduresAreCalledByName) {
  expectRows({
      {"declare @r varchar(50);exec P 31,@r out;select @r", "p31"},
      {"declare @r varchar(50) exec p 'a', @r output select @r as x", "pa"},
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
  expectRows({
      {"INSERT Customer (ID, Name) VALUES (40, 'x')", "refused"},
      {"SET IDENTITY_INSERT Customer ON", ""},
      {"INSERT Customer (ID, Name) VALUES (40, 'x') SELECT @@IDENTITY", "40"},
      {"INSERT Contract (ID, Title) VALUES (40, 'x')", "refused"},
      {"SET IDENTITY_INSERT Contract ON", "refused"},
      {"SET IDENTITY_INSERT Customer OFF", ""},
      {"INSERT Customer (ID, Name) VALUES (41, 'x')", "refused"},
      {"INSERT Customer (Name) VALUES ('y') SELECT @@IDENTITY", "41"},
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

TEST_F(Business, Expressions) {
  expectRows(
      {
          {"'10' + 1", "11"},
          {"Qty + '1' FROM Contract WHERE ID = 1", "8"},
          {"CAST(GETDATE() - GETDATE() AS int)", "0"},
          {"CAST('2024-1-5' AS datetime) - 5", "2023-12-31 00:00:00"},
          {"7.9 % 3", "1.9"},
          {"5 | 2, 6 & 3, 6 ^ 3, ~ 0", "7,2,5,-1"},
          {"CASE 1 WHEN '1' THEN 'a' END", "a"},
          {"'x' COLLATE Chinese_PRC_CI_AS", "x"},
          {"SIGN(-2.5), ABS(-3)", "-1,3"},
          {"CEILING(-1.5), CEILING(1.2)", "-1,2"},
          {"ROUND(1.005, 2), ROUND(-2.5, 0)", "1.01,-3"},
          {"SQRT(16), SQUARE(3), EXP(0), LOG10(1000)", "4,9,1,3"},
          {"POWER(2, -1), POWER(2.5, 2)", "0,6.3"},
          {"HOUR('2024-1-5 7:08:09'), MINUTE('2024-1-5 7:08:09'), SECOND('2024-1-5 7:08:09')",
           "7,8,9"},
          {"MONTH('20240305'), DAY('2024/3/5')", "3,5"},
          {"DATEPART(q, '2024-5-1'), DATEPART(dy, '2024-3-1'), DATEPART(dw, '2024-1-7')", "2,61,1"},
          {"DATEPART(wk, '2024-1-7'), DATEPART(ms, '2024-1-7 1:2:3.045')", "2,45"},
          {"DATENAME(month, '2024-1-5')", "01"},
          {"DATEDIFF(d, '2024-1-1 23:59:59', '2024-1-2 0:00:01')", "1"},
          {"DATEDIFF(mi, '2024-1-1 23:59:59', '2024-1-2 0:00:01')", "1"},
          {"DATEDIFF(m, '2024-1-31', '2024-2-1'), DATEDIFF(yy, '2024-12-31', '2025-1-1')", "1,1"},
          {"DATEDIFF(wk, '2024-1-6', '2024-1-7'), DATEDIFF(q, '2024-3-31', '2024-4-1')", "1,1"},
          {"DATEADD(yy, 1, '2024-2-29'), DATEADD(ss, -1, '2024-1-1')",
           "2025-02-28 00:00:00,2023-12-31 23:59:59"},
          {"CAST('12abc' AS int)", "refused"},
          {"CAST('abcdefghijklmnopqrstuvwxyzabcdefgh' AS varchar)",
           "abcdefghijklmnopqrstuvwxyzabcd"},
          {"COALESCE(NULL, '1', 2), NULLIF(2, 2), IIF(NULL = 1, 1, 2)", "1,NULL,2"},
          {"DATALENGTH(N'ab字')", "6"},
          {"SUBSTRING('abc', -1, 3), SUBSTRING('abc', 2, 9)", "a,bc"},
          {"RIGHT('abc', 2), LEFT('abc', 9)", "bc,abc"},
          {"REPLACE('aAb', 'A', ''), REPLACE('ab', '', 'x')", "b,ab"},
          {"LTRIM(' a '), RTRIM(' a '), UPPER('aé'), LOWER('ÀB')", "a , a,AÉ,àb"},
          {"STR(5), STR(123456, 4), STR(2.5, 5, 1)", "         5,****,  2.5"},
          {"CHARINDEX('', 'a'), CHARINDEX('b', 'aBAB', 3)", "0,4"},
          {"REPLICATE('ab', 2), SPACE(2), REPLICATE('a', -1)", "abab,  ,NULL"},
          {"REVERSE('abc'), ASCII('A'), CHAR(65)", "cba,65,A"},
          {"ISNUMERIC('1.5'), ISNUMERIC('x'), ISNUMERIC(NULL)", "1,0,0"},
          {"COUNT(*), SUM(Qty), AVG(Qty), MIN(Qty) FROM Contract WHERE 1 = 0", "0,NULL,NULL,NULL"},
          {"AVG(Amount) FROM Contract WHERE ID IN (1, 4)", "510"},
      },
      "SELECT ");
}

TEST_F(Business, DateStyles) {
  const std::vector<Answer> styles = {
      {"0", "Jan  5 2024  7:08PM"},
      {"100", "Jan  5 2024  7:08PM"},
      {"101", "01/05/2024"},
      {"102", "2024.01.05"},
      {"103", "05/01/2024"},
      {"104", "05.01.2024"},
      {"105", "05-01-2024"},
      {"108", "19:08:09"},
      {"111", "2024/01/05"},
      {"112", "20240105"},
      {"20", "2024-01-05 19:08:09"},
      {"120", "2024-01-05 19:08:09"},
      {"21", "2024-01-05 19:08:09.045"},
      {"121", "2024-01-05 19:08:09.045"},
      {"23", "2024-01-05"},
      {"126", "2024-01-05T19:08:09.045"},
  };
  for (const auto& [style, expected] : styles) {
    EXPECT_EQ(rows("SELECT CONVERT(varchar(30), CAST('2024-1-5 19:08:09.045' AS datetime), " +
                   style + ")"),
              expected)
        << style;
  }
}

}  // namespace
}  // namespace tarlo::database::test
