// T-SQL in, values out: the whole way through the front end and an engine.

#include "business.h"

namespace tarlo::database::test {
namespace {

TARLO_ON_EVERY_ENGINE(Business);

TEST_P(Business, ComparisonsFollowTheHigherKind) {
  expectRows(
      {
          {"Amount * 2 > '100'", "1"},
          {"Qty = ''", "4"},
          {"Qty > '1'", "1;2"},
          {"Qty NOT BETWEEN 1 AND 6", "1;4"},
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
          {"EXISTS (SELECT * FROM Customer WHERE ID = Contract.CustID AND Name = 'ANN')", "1"},
          {"NOT Qty IN (7)", "2;4"},
          {"1 = 1 AND 1 <> 1", ""},
          {"(Qty = 7 OR Qty = 2) AND ID = 2", "2"},
          {"Qty = '5.5'", "refused"},
          {"SignDate > 'soon'", "refused"},
      },
      "SELECT ID FROM Contract WHERE ");
}

TEST_P(Business, OperatorsAndConversions) {
  expectRows(
      {
          {"'a' + 'b' + NULL, '2' + 3, '10' + 1", "NULL,5,11"},
          {"Qty + '1' FROM Contract WHERE ID = 1", "8"},
          {"5 & 1 + 1, 5 | 2, 6 ^ 3, ~ 0, - -5", "2,7,5,-1,5"},
          {"7 / 2, 7.0 / 2, -7 % 3, 7.9 % 3", "3,3.5,-1,1.9"},
          {"CASE 'A ' WHEN 'a' THEN 1 ELSE '2' END, CASE 1 WHEN '1' THEN 'a' END", "1,a"},
          {"'x' COLLATE Chinese_PRC_CI_AS", "x"},
          {"CAST(3.7 AS int), CAST(2.5 AS decimal), CAST('2.345' AS decimal(5,2))", "3,3,2.35"},
          {"CAST('12abc' AS int)", "refused"},
          {"CAST(Amount AS varchar) FROM Contract WHERE ID = 1", "1000.00"},
          {"CAST(12345 AS varchar(3)), CAST('abcdef' AS varchar(3))", "*,abc"},
          {"CAST('abcdefghijklmnopqrstuvwxyzabcdefgh' AS varchar)",
           "abcdefghijklmnopqrstuvwxyzabcd"},
          {"CONVERT(varchar(7), SignDate, 120) FROM Contract WHERE ID = 1", "2024-01"},
          {"CAST('2024-1-5' AS datetime) + 30, CAST('2024-1-5' AS datetime) - 5",
           "2024-02-04 00:00:00,2023-12-31 00:00:00"},
          {"CAST(CAST('2024-1-5' AS datetime) - CAST('2024-1-1' AS datetime) AS int)", "4"},
          {"CAST(1 AS datetime)", "1900-01-02 00:00:00"},
          {"Memo * 2 FROM Contract WHERE ID = 3", "10"},
          {"Memo * 2 FROM Contract WHERE ID = 4", "refused"},
          {"1 / (Qty - 2) FROM Contract WHERE ID = 2", "refused"},
      },
      "SELECT ");
}

// The edges of each are those of the functions that serve them.
TEST_P(Business, EveryFunctionHasItsMeaning) {
  expectRows(
      {
          {"SIGN(-2.5), ABS(-3), ABS('-1.5'), CEILING(7)", "-1,3,1.5,7"},
          {"CEILING(-1.5), CEILING(1.2), FLOOR(-1.5)", "-1,2,-2"},
          {"ROUND(1.005, 2), ROUND(-2.5, 0), ROUND(1234, -2), ROUND(2.675, 2, 1)",
           "1.01,-3,1200,2.67"},
          {"SQRT(16), SQUARE(3), EXP(0), LOG(1), LOG10(1000)", "4,9,1,0,3"},
          {"POWER(2, 3), POWER(2, -1), POWER(2.5, 2)", "8,0,6.3"},
          {"CAST(GETDATE() - GETDATE() AS int)", "0"},
          {"HOUR('2024-1-5 7:08:09'), MINUTE('2024-1-5 7:08:09'), SECOND('2024-1-5 7:08:09')",
           "7,8,9"},
          {"YEAR('2024-1-5'), MONTH('20240305'), DAY('2024/3/5')", "2024,3,5"},
          {"DATEPART (yy, '2024-1-5'), DATEPART(q, '2024-5-1'), DATEPART(dw, '2024-1-7')",
           "2024,2,1"},
          {"DATEPART(dy, '2024-3-1'), DATEPART(wk, '2024-1-7'), DATEPART(ms, '1:2:3.045')",
           "61,2,45"},
          {"DATENAME(month, '2024-1-5'), DATENAME(dw, '2024-1-5')", "01,星期五"},
          {"DATEDIFF(d, '2024-1-1 23:59', '2024-1-2'), DATEDIFF(hh, '2024-1-1 23:59', '2024-1-2')",
           "1,1"},
          {"DATEDIFF(mi, '2024-1-1 23:59:59', '2024-1-2 0:00:01')", "1"},
          {"DATEDIFF(m, '2024-1-31', '2024-2-1'), DATEDIFF(yy, '2024-12-31', '2025-1-1')", "1,1"},
          {"DATEDIFF(wk, '2024-1-6', '2024-1-7'), DATEDIFF(q, '2024-3-31', '2024-4-1')", "1,1"},
          {"DATEADD(yy, 1, '2024-2-29'), DATEADD(m, 1, '2024-1-31'), DATEADD(ss, -1, '2024-1-1')",
           "2025-02-28 00:00:00,2024-02-29 00:00:00,2023-12-31 23:59:59"},
          {"ISNULL(Qty, '') FROM Contract WHERE ID = 3", "0"},
          {"COALESCE(NULL, '1', 2), NULLIF(2, 2), NULLIF('a', 'A'), IIF(NULL = 1, 1, 2)",
           "1,NULL,NULL,2"},
          {"LEN('ab '), LEN(123), DATALENGTH(N'ab字')", "2,3,6"},
          {"SUBSTRING('abc', 0, 2), SUBSTRING('abc', -1, 3), SUBSTRING('abc', 2, 9)", "a,a,bc"},
          {"LEFT('abc', 2) + RIGHT('abc', 0), RIGHT('abc', 2), LEFT('abc', 9)", "ab,bc,abc"},
          {"REPLACE('aBc', 'b', 'x'), REPLACE('aAb', 'A', ''), REPLACE('ab', '', 'x')", "axc,b,ab"},
          {"LTRIM(' a '), RTRIM(' a '), UPPER('aé'), LOWER('ÀB')", "a , a,AÉ,àb"},
          {"STR(5), STR(123456, 4), STR(3.14159, 6, 2)", "         5,****,  3.14"},
          {"CHARINDEX('', 'a'), CHARINDEX('C', 'abc'), CHARINDEX('b', 'aBAB', 3)", "0,3,4"},
          {"REPLICATE('ab', 2), SPACE(2), REPLICATE('a', -1)", "abab,  ,NULL"},
          {"REVERSE('abc'), ASCII('A'), CHAR(65), STUFF('abc', 2, 1, 'X')", "cba,65,A,aXc"},
          {"CONCAT('a', NULL, 1), ISNUMERIC('1.5'), ISNUMERIC('1e'), ISNUMERIC(NULL)", "a1,1,0,0"},
          {"COUNT(*), COUNT(Qty), COUNT(DISTINCT CustID) FROM Contract", "4,3,3"},
          {"AVG(Qty), SUM(Qty), MAX(Title), MIN(Title) FROM Contract", "3,9,Gamma,Alpha "},
          {"COUNT(DISTINCT City) FROM Customer", "2"},
          {"COUNT(*), SUM(Qty), AVG(Qty), MIN(Qty) FROM Contract WHERE 1 = 0", "0,NULL,NULL,NULL"},
          {"AVG(Amount) FROM Contract WHERE ID IN (1, 4)", "510"},
      },
      "SELECT ");
}

TEST_P(Business, DateStyles) {
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

TEST_P(Business, Writes) {
  expectRows({
      {"insert Customer (Name) values ('Dan');select @@identity as NeoID", "4"},
      {"set nocount on insert into Customer (Name) values ('Eve') select SCOPE_IDENTITY() as N",
       "5"},
      {"UPDATE Contract SET Amount = Amount / 3, Qty = '9' WHERE Title = 'delta'", ""},
      {"SELECT Amount, Qty FROM Contract WHERE ID = 4", "6.67,9"},
      {"INSERT INTO Contract (Title, Amount) SELECT Name, ID / 3.0 FROM Customer WHERE ID = 2",
       "5"},
      {"SELECT Title, Amount, Flag FROM Contract WHERE ID = 5", "Bob,0.67,1"},
      {"UPDATE Contract SET Title = Title + '0123456789012345' WHERE ID = 1", "refused"},
      {"INSERT INTO Contract (Title) VALUES ('012345678901234567890')", "refused"},
  });
}

}  // namespace
}  // namespace tarlo::database::test
