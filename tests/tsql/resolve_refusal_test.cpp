// What must be refused, each beside a statement that differs little and must pass.

#include <gtest/gtest.h>

#include "resolve_support.h"

namespace tarlo::tsql::testing {
namespace {

struct Refused {
  const char* refused;
  const char* message;  // a part of it
  const char* accepted;
};

void check(const Refused& row) {
  SCOPED_TRACE(row.refused);
  const std::string outcome = outcomeOf(row.refused);
  EXPECT_NE(outcome.find(row.message), std::string::npos) << outcome;
  EXPECT_EQ(outcomeOf(row.accepted), "accepted") << row.accepted;
}

TEST(ResolveRefusals, names) {
  const Refused rows[] = {
      {"select Foo from Orders", "unknown column Foo", "select aMOUNT from ORDERS"},
      {"select ID from Nowhere", "unknown table Nowhere", "select ID from dbo.Orders"},
      {"select ID from other.Orders", "expected the schema dbo", "select ID from [Orders]"},
      {"select \"name\" from Orders", "unknown column name", "select \"Amount\" from Orders"},
      {"select Orders.ID from Orders o", "unknown column Orders.ID", "select O.ID from Orders o"},
      {"select X.* from Orders", "table X does not stand", "select orders.* from Orders"},
      {"select 1 from Orders, orders", "stands twice", "select 1 from Orders, orders o"},
      {"select Zembra_Flag from Orders, Customer", "Zembra_Flag is ambiguous",
       "select Orders.Zembra_Flag from Orders, Customer"},
      {"select *", "* needs a FROM", "select 1"},
      {"select t.ID from Orders a join Customer c on a.CustID=d.ID, Region d",
       "unknown column d.ID",
       "select a.ID from Orders a join Customer c on a.CustID=c.ID, Region d"},
      {"select 1 from Orders o, (select ID from Customer where ID=o.ID) d", "unknown column o.ID",
       "select 1 from Orders o where exists (select ID from Customer where ID=o.ID)"},
      {"select d.Amount from (select ID from Orders) d", "unknown column d.Amount",
       "select d.id from (select ID from Orders) d"},
      {"select 1 from (select ID+1 from Orders) d", "has no name",
       "select 1 from (select ID+1 as n from Orders) d"},
      {"select 1 from (select ID, id from Orders) d", "stands twice in d",
       "select 1 from (select ID, id as b from Orders) d"},
      {"select LENGTH('a')", "unknown function LENGTH", "select len('a')"},
      {"select datepart(century, SignDate) from UserTb_Contract", "unknown date part century",
       "select datepart(YY, SignDate) from UserTb_Contract"},
      {"select cast(1 as text)", "unknown type text", "select cast(1 as NVarChar(max))"},
      {"select @r", "@r is not declared", "select @@identity"},
      {"declare @r varchar(50);exec Nothing 1,@r out;select @r", "unknown procedure Nothing",
       "declare @r varchar(50);exec Zembra_WorkFlowInstance_IsExistsTempMenu 1,@R out;select @r"},
      {"declare @r int;exec Zembra_WorkFlowInstance_IsExistsTempMenu 1,@x out;select @r",
       "@x is not declared",
       "declare @r int;exec Zembra_WorkFlowInstance_IsExistsTempMenu -1,@r out;select @r"},
  };
  for (const Refused& row : rows) check(row);
}

TEST(ResolveRefusals, kinds) {
  const Refused rows[] = {
      {"select ID from Orders where ID='abc'", "'abc' cannot be converted to an integer",
       "select ID from Orders where ID=' -12 '"},
      {"select ID from Orders where ID='5.5'", "'5.5' cannot", "select 1 from Orders where ID=5.5"},
      {"select ID from Orders where Amount>'ten'", "'ten' cannot be converted to a number",
       "select ID from Orders where [Amount]*2 > '100.5'"},
      {"select ID from Orders where ID in (1,'x')", "'x' cannot",
       "select ID from Orders where ID in (1,'2','')"},
      {"select ID from Orders where ID between 'a' and 3", "'a' cannot",
       "select ID from Orders where ID between '1' and 3"},
      {"select 1 from UserTb_Contract where SignDate>='2024-13-1'", "to a date",
       "select 1 from UserTb_Contract where SignDate>='2024-12-1' or EndDate >=''"},
      {"select case ID when 'x' then 1 end from Orders", "'x' cannot",
       "select case City when 'x' then 1 end from Customer"},
      {"select case when 1=1 then ID else 'x' end from Orders", "'x' cannot",
       "select case when 1=1 then ID else '' end from Orders"},
      {"select isnull(ID,'none') from Orders", "'none' cannot", "select isnull(ID,'') from Orders"},
      {"select Qty+'one' from UserTb_Item", "'one' cannot", "select [Qty]+'1' from UserTb_Item"},
      {"select City*'2' from Customer", "operator * does not take text and text",
       "select City+'2' from Customer"},
      {"select Qty*'two' from UserTb_Item", "'two' cannot", "select Qty*Product from UserTb_Item"},
      {"select -City from Customer", "operator - does not take text", "select -ID from Customer"},
      {"select ~Amount from Orders", "operator ~ does not take", "select ~ID from Orders"},
      {"select Amount & 1 from Orders", "operator & does not take", "select ID & '1' from Orders"},
      {"select SignDate+'30' from UserTb_Contract", "operator + does not take a date and text",
       "select SignDate+30 from UserTb_Contract"},
      {"select SignDate*2 from UserTb_Contract", "operator * does not take a date",
       "select 1.5+SignDate from UserTb_Contract"},
      {"select 3-SignDate from UserTb_Contract", "does not take",
       "select SignDate-3 from "
       "UserTb_Contract"},
      {"select left('a', SignDate) from UserTb_Contract", "a date does not convert",
       "select left(SignDate, '4') from UserTb_Contract"},
      {"select year('soon')", "'soon' cannot", "select year('2024/1/5')"},
      {"select 1/0", "division by zero", "select 1/2"},
      {"select ID % 0.0 from Orders", "division by zero", "select ID % 3 from Orders"},
      {"select sum(City) from Customer", "SUM does not take text",
       "select max(City) from Customer"},
      {"select avg(SignDate) from UserTb_Contract", "AVG does not take a date",
       "select avg(Qty), min(SignDate) from UserTb_Contract"},
      {"select convert(varchar(10), getdate(), 7)", "style 7",
       "select convert(varchar(10), getdate(), 120)"},
      {"select convert(varchar(10), 5, 120)", "style 120", "select convert(varchar(10), 5, 2)"},
      {"select convert(datetime, '1/2/2024', 103)", "style 103",
       "select convert(datetime, '2024/2/1', 111)"},
      {"select cast('12a' as int)", "'12a' cannot", "select cast('12' as int)"},
      {"select cast(1 as decimal(5,6))", "does not take this size",
       "select cast(1 as decimal(6,5))"},
      {"select 1 union select 'x'", "'x' cannot",
       "select -1,'--' union select ID,City from Customer"},
  };
  for (const Refused& row : rows) check(row);
}

TEST(ResolveRefusals, rulesOfQueries) {
  const Refused rows[] = {
      {"select City, count(*) from Customer", "column City must stand in GROUP BY",
       "select City, count(*) from Customer group by city"},
      {"select ID, City from Customer group by City", "column ID must stand",
       "select max(ID), City from Customer group by City"},
      {"select * from Customer group by City", "must stand in GROUP BY",
       "select 5 from Customer group by City"},
      {"select ID from Orders having 1=1", "column ID must stand",
       "select 1 from Orders having 1=1"},
      {"select City from Customer group by City having ID=1", "column ID must stand",
       "select City from Customer group by City having count(ID)=1 and 1 = 0"},
      {"select City from Customer group by City order by RegionID", "RegionID must stand",
       "select City from Customer group by City order by sum(RegionID), City"},
      {"select Qty+2 from UserTb_Item group by Qty+1", "column Qty must stand",
       "select (([usertb_item].QTY)+1)*2 from UserTb_Item group by Qty+1"},
      {"select datepart(mm,SignDate) from UserTb_Contract group by datepart(yy,SignDate)",
       "SignDate must stand",
       "select datepart(year,SignDate) from UserTb_Contract group by datepart(yy,SignDate)"},
      {"select City,(select count(*) from Orders where CustID=Customer.ID) from Customer "
       "group by City",
       "column ID must stand",
       "select ID,(select count(*) from Orders where CustID=Customer.ID) from Customer group by "
       "ID"},
      {"select 1 from Customer group by 1", "must hold a column",
       "select 1 from Orders group by ID"},
      {"select City c from Customer group by c", "unknown column c",
       "select City c from Customer group by City order by C"},
      {"select 1 from Orders group by (select 1)", "sub-query cannot stand in GROUP BY",
       "select 1 from Orders group by abs(ID)"},
      {"select 1 from Orders group by sum(ID)", "SUM cannot stand in GROUP BY",
       "select sum(ID) from Orders"},
      {"select ID from Orders where sum(ID)>1", "SUM cannot stand in WHERE",
       "select ID from Orders where ID=(select max(ID) from Orders)"},
      {"select 1 from Orders a join Orders b on max(a.ID)=b.ID", "MAX cannot stand in ON",
       "select 1 from Orders a join Orders b on a.ID=b.ID"},
      {"select max(sum(ID)) from Orders", "cannot stand in another aggregate",
       "select abs(sum(ID)) from Orders"},
      {"select sum((select 1)) from Orders", "cannot hold a sub-query",
       "select (select sum(ID) from Orders)"},
      {"select ABS() from Orders", "ABS takes 1 argument(s), not 0", "select ABS(ID) from Orders"},
      {"select ABS(*) from Orders", "found '*'", "select count(*) from Orders"},
      {"select getdate(1)", "GETDATE takes 0", "select getdate()"},
      {"select round(1.5)", "ROUND takes 2 to 3", "select round(1.5,0,1)"},
      {"select coalesce(1)", "at least 2", "select coalesce(1,2,3,4,5,6)"},
      {"select (select ID, Amount from Orders)", "one column, not 2",
       "select 1 where exists (select ID, Amount from Orders)"},
      {"select 1 from Orders where ID in (select * from Customer)", "one column, not 4",
       "select 1 from Orders where ID in (select ID from Customer)"},
      {"select ID from Orders union select ID, City from Customer", "1 and 2 columns",
       "select ID from Orders union select City from Customer"},
      {"select ID from Orders union select ID from Customer order by Amount", "titles and numbers",
       "select ID from Orders union select ID from Customer order by id desc"},
      {"select distinct City from Customer order by RegionID", "selected expressions only",
       "select distinct City from Customer c order by c.city"},
      {"select ID from Orders order by 2", "there are 1 columns",
       "select ID from Orders order by 1"},
      {"select ID from Orders order by -1", "ORDER BY a constant",
       "select ID from Orders order by -Amount"},
      {"select ID from Orders order by 'x'", "ORDER BY a constant",
       "select ID from Orders order by (select 1)"},
      {"select a.ID, b.ID from Orders a, Region b order by ID", "ORDER BY ID is ambiguous",
       "select a.ID, a.id from Orders a, Region b order by ID"},
      {"select 1 from (select ID from Orders order by ID) d", "needs TOP",
       "select 1 from (select top 3 ID from Orders order by ID) d"},
      {"select top 99999999999999999999 ID from Orders", "TOP needs a whole number",
       "select top 0 ID from Orders"},
      {"select 1 from Orders o where exists (select sum(o.Amount) from Customer)", "outer query",
       "select 1 from Orders o where exists (select sum(ID) from Customer where ID=o.ID)"},
  };
  for (const Refused& row : rows) check(row);
}

TEST(ResolveRefusals, writing) {
  const Refused rows[] = {
      {"insert Region(Name,Foo) values('a',1)", "unknown column Foo",
       "insert Region(name,ZEMBRA_flag) values('a',1)"},
      {"insert Region(Name,name) values('a','b')", "written twice",
       "insert into Region(Name) values('a'),('b')"},
      {"insert Region(Name) values('a',1)", "1 columns of Region and 2 values",
       "insert Region values('a',1)"},
      {"insert Region select ID from Orders", "2 columns of Region and 1 values",
       "insert Region select City, 1 from Customer"},
      {"insert Region(Name, Zembra_Flag) select City,'x' from Customer", "'x' cannot",
       "insert Region(Name, Zembra_Flag) select City,'' from Customer"},
      {"insert Zembra_DataDict_Table(DDT_ID) values(1)", "DDT_ID is computed",
       "insert Zembra_DataDict_Table(DDT_Name) values(N'表')"},
      {"insert UserTb_Region(Code) values('12345678901')", "longer than the 10 characters",
       "insert UserTb_Region(Code) values('一二三四五六七八九十')"},
      {"insert Orders(Amount) values('much')", "'much' cannot", "insert Orders(Amount) values('')"},
      {"insert Orders(Amount) values(Amount)", "unknown column Amount",
       "insert Orders(Amount) values((select max(Amount) from Orders))"},
      {"update Region set Foo=1", "unknown column Foo", "update Region set Name='x' where ID='3'"},
      {"update Region set Name='a', name='b'", "written twice",
       "update Region set Name='a', Zembra_Flag=0"},
      {"update Region set ID=1", "identity column ID", "update Region set Name=ID"},
      {"update Zembra_DataDict_Table set DDT_ID=1", "computed",
       "update Zembra_DataDict_Table set DDT_Status='1'"},
      {"update UserTb_Region set Code='12345678901'", "longer than",
       "update UserTb_Region set Code='1234567890   '"},
      {"update Orders set Amount=sum(Amount)", "SUM cannot stand in SET",
       "update Orders set Amount=Amount*2"},
      {"update Orders set CustID=getdate()", "a date does not convert",
       "update UserTb_Contract set SignDate=0, Title=getdate()"},
      {"set identity_insert Zembra_Policy on", "no identity column",
       "set identity_insert Region on"},
  };
  for (const Refused& row : rows) check(row);
}

TEST(ResolveRefusals, creating) {
  const Refused rows[] = {
      {"create table T(a int, A int)", "defined twice", "create table T(a int, b int)"},
      {"create table T(a blob)", "unknown type blob", "create table T(a nvarchar(max))"},
      {"create table T(a int default 'x')", "'x' cannot", "create table T(a int default '1')"},
      {"create table T(a datetime default (ID))", "unknown column ID",
       "create table T(a datetime default getdate())"},
      {"create table T(a int, b as c)", "unknown column c", "create table T(b as a*2, a int)"},
      {"create table T(a varchar(5) identity)", "must be an integer",
       "create table T(a int identity(1,1) primary key)"},
      {"create table T(a int, primary key(b))", "unknown column b",
       "create table T(a int, b int, primary key(a,b))"},
      {"create index i on Region(Foo)", "unknown column Foo", "create index i on Region(Name)"},
      {"create index i on Region(Name,name)", "stands twice",
       "create unique index i on Region(Name,ID desc)"},
  };
  for (const Refused& row : rows) check(row);
}

TEST(ResolveRefusals, positionPointsAtTheNode) {
  try {
    resolveText("select ID,\n  Foo from Orders");
    FAIL();
  } catch (const StatementError& error) {
    EXPECT_EQ(error.refusal(), Refusal::Name);
    EXPECT_EQ(error.position().line, 2u);
    EXPECT_EQ(error.position().column, 3u);
  }
}

}  // namespace
}  // namespace tarlo::tsql::testing
