// What must be refused, each beside a statement that differs little and must pass.

#include <gtest/gtest.h>

#include "resolve_support.h"

namespace tarlo::tsql::testing {
namespace {

// A statement "before {refused|accepted} behind", and a part of the refusal.
using Refused = std::pair<std::string, const char*>;

void check(const std::vector<Refused>& rows) {
  for (const auto& row : rows) {
    const std::string& sql = row.first;
    const std::size_t open = sql.find('{');
    const std::size_t bar = sql.find('|', open);
    const std::size_t close = sql.find('}', bar);
    const auto with = [&](std::size_t begin, std::size_t end) {
      return sql.substr(0, open) + sql.substr(begin + 1, end - begin - 1) + sql.substr(close + 1);
    };
    const std::string outcome = outcomeOf(with(open, bar));
    EXPECT_NE(outcome.find(row.second), std::string::npos) << with(open, bar) << ": " << outcome;
    EXPECT_EQ(outcomeOf(with(bar, close)), "accepted") << with(bar, close);
  }
}

TEST(ResolveRefusals, names) {
  check({
      {"select {Foo|aMOUNT} from ORDERS", "unknown column Foo"},
      {"select ID from {Nowhere|dbo.Orders}", "unknown table Nowhere"},
      {"select ID from {other.Orders|[Orders]}", "expected the schema dbo"},
      {"select \"{name|Amount}\" from Orders", "unknown column name"},
      {"select {Orders.ID|O.ID} from Orders o", "unknown column Orders.ID"},
      {"select {X.|orders.}* from Orders", "table X does not stand"},
      {"select 1 from Orders, orders{| o}", "stands twice"},
      {"select {Zembra_Flag|Orders.Zembra_Flag} from Orders, Customer", "Zembra_Flag is ambiguous"},
      {"select {*|1}", "* needs a FROM"},
      {"select {t.ID from Orders a join Customer c on a.CustID=d.ID|a.ID from Orders a join "
       "Customer c on a.CustID=c.ID}, Region d",
       "unknown column d.ID"},
      {"select 1 from Orders o{, (select ID from Customer where ID=o.ID) d| where exists (select "
       "ID from Customer where ID=o.ID)}",
       "unknown column o.ID"},
      {"select {d.Amount|d.id} from (select ID from Orders) d", "unknown column d.Amount"},
      {"select 1 from (select ID+1 {|as n }from Orders) d", "has no name"},
      {"select 1 from (select ID, id {|as b }from Orders) d", "stands twice in d"},
      {"select {LENGTH|len}('a')", "unknown function LENGTH"},
      {"select datepart({century|YY}, SignDate) from UserTb_Contract", "unknown date part century"},
      {"select cast(1 as {text|NVarChar(max)})", "unknown type text"},
      {"select {@r|@@identity}", "@r is not declared"},
      {"declare @r varchar(50);exec {Nothing 1,@r|Zembra_WorkFlowInstance_IsExistsTempMenu 1,@R} "
       "out;select @r",
       "unknown procedure Nothing"},
      {"declare @r int;exec Zembra_WorkFlowInstance_IsExistsTempMenu {1,@x|-1,@r} out;select @r",
       "@x is not declared"},
  });
}

TEST(ResolveRefusals, kinds) {
  check({
      {"select ID from Orders where ID='{abc| -12 }'", "'abc' cannot be converted to an integer"},
      {"select {ID from Orders where ID='5.5'|1 from Orders where ID=5.5}", "'5.5' cannot"},
      {"select ID from Orders where {Amount>'ten|[Amount]*2 > '100.5}'",
       "'ten' cannot be converted to a number"},
      {"select ID from Orders where ID in (1,'{x|2','}')", "'x' cannot"},
      {"select ID from Orders where ID between '{a|1}' and 3", "'a' cannot"},
      {"select 1 from UserTb_Contract where SignDate>='2024-{13-1|12-1' or EndDate >='}'",
       "to a date"},
      {"select case {ID when 'x' then 1 end from Orders|City when 'x' then 1 end from Customer}",
       "'x' cannot"},
      {"select case when 1=1 then ID else '{x|}' end from Orders", "'x' cannot"},
      {"select isnull(ID,'{none|}') from Orders", "'none' cannot"},
      {"select {Qty+'one|[Qty]+'1}' from UserTb_Item", "'one' cannot"},
      {"select City{*|+}'2' from Customer", "operator * does not take text and text"},
      {"select Qty*{'two'|Product} from UserTb_Item", "'two' cannot"},
      {"select -{City|ID} from Customer", "operator - does not take text"},
      {"select ~{Amount|ID} from Orders", "operator ~ does not take"},
      {"select {Amount & 1|ID & '1'} from Orders", "operator & does not take"},
      {"select SignDate+{'30'|30} from UserTb_Contract",
       "operator + does not take a date and text"},
      {"select {SignDate*2|1.5+SignDate} from UserTb_Contract", "operator * does not take a date"},
      {"select {3-SignDate|SignDate-3} from UserTb_Contract", "does not take"},
      {"select left({'a', SignDate|SignDate, '4'}) from UserTb_Contract",
       "a date does not convert"},
      {"select year('{soon|2024/1/5}')", "'soon' cannot"},
      {"select 1/{0|2}", "division by zero"},
      {"select ID % {0.0|3} from Orders", "division by zero"},
      {"select {sum|max}(City) from Customer", "SUM does not take text"},
      {"select avg({|Qty), min(}SignDate) from UserTb_Contract", "AVG does not take a date"},
      {"select convert(varchar(10), getdate(), {7|120})", "style 7"},
      {"select convert(varchar(10), 5, {120|2})", "style 120"},
      {"select convert(datetime, '{1/2/2024', 103|2024/2/1', 111})", "style 103"},
      {"select cast('{12a|12}' as int)", "'12a' cannot"},
      {"select cast(1 as decimal({5,6|6,5}))", "does not take this size"},
      {"select {1 union select 'x'|-1,'--' union select ID,City from Customer}", "'x' cannot"},
  });
}

TEST(ResolveRefusals, rulesOfQueries) {
  check({
      {"select City, count(*) from Customer{| group by city}",
       "column City must stand in GROUP BY"},
      {"select {ID|max(ID)}, City from Customer group by City", "column ID must stand"},
      {"select {*|5} from Customer group by City", "must stand in GROUP BY"},
      {"select {ID|1} from Orders having 1=1", "column ID must stand"},
      {"select City from Customer group by City having {ID=1|count(ID)=1 and 1 = 0}",
       "column ID must stand"},
      {"select City from Customer group by City order by {RegionID|sum(RegionID), City}",
       "RegionID must stand"},
      {"select {Qty+|(([usertb_item].QTY)+1)*}2 from UserTb_Item group by Qty+1",
       "column Qty must stand"},
      {"select datepart({mm|year},SignDate) from UserTb_Contract group by datepart(yy,SignDate)",
       "SignDate must stand"},
      {"select {City,(select count(*) from Orders where CustID=Customer.ID) from Customer group by "
       "City|ID,(select count(*) from Orders where CustID=Customer.ID) from Customer group by ID}",
       "column ID must stand"},
      {"select 1 from {Customer group by 1|Orders group by ID}", "must hold a column"},
      {"select City c from Customer group by {c|City order by C}", "unknown column c"},
      {"select 1 from Orders group by {(select 1|abs(ID})", "sub-query cannot stand in GROUP BY"},
      {"select {1 from Orders group by sum(ID)|sum(ID) from Orders}",
       "SUM cannot stand in GROUP BY"},
      {"select ID from Orders where {sum(ID)>1|ID=(select max(ID) from Orders)}",
       "SUM cannot stand in WHERE"},
      {"select 1 from Orders a join Orders b on {max(a.ID)|a.ID}=b.ID", "MAX cannot stand in ON"},
      {"select {max|abs}(sum(ID)) from Orders", "cannot stand in another aggregate"},
      {"select {sum((select 1)) from Orders|(select sum(ID) from Orders)}",
       "cannot hold a sub-query"},
      {"select ABS({|ID}) from Orders", "ABS takes 1 argument(s), not 0"},
      {"select {ABS|count}(*) from Orders", "found '*'"},
      {"select left('a'{|, 1})", "LEFT takes 2"},
      {"select getdate({1|})", "GETDATE takes 0"},
      {"select round(1.5{|,0,1})", "ROUND takes 2 to 3"},
      {"select coalesce(1{|,2,3,4,5,6})", "at least 2"},
      {"select {|1 where exists }(select ID, Amount from Orders)", "one column, not 2"},
      {"select 1 from Orders where ID in (select {*|ID} from Customer)", "one column, not 4"},
      {"select ID from Orders union select {ID, |}City from Customer", "1 and 2 columns"},
      {"select ID from Orders union select ID from Customer order by {Amount|id desc}",
       "titles and numbers"},
      {"select distinct City from Customer {order by RegionID|c order by c.city}",
       "selected expressions only"},
      {"select ID from Orders order by {2|1}", "there are 1 columns"},
      {"select ID from Orders order by -{1|Amount}", "ORDER BY a constant"},
      {"select ID from Orders order by {'x'|(select 1)}", "ORDER BY a constant"},
      {"select a.ID, {b.ID|a.id} from Orders a, Region b order by ID", "ORDER BY ID is ambiguous"},
      {"select 1 from (select {|top 3 }ID from Orders order by ID) d", "needs TOP"},
      {"select top {99999999999999999999|0} ID from Orders", "TOP needs a whole number"},
      {"select 1 from Orders o where exists (select sum({o.Amount) from Customer|ID) from Customer "
       "where ID=o.ID})",
       "outer query"},
  });
}

TEST(ResolveRefusals, writing) {
  check({
      {"insert Region({Name,Foo|name,ZEMBRA_flag}) values('a',1)", "unknown column Foo"},
      {"insert {Region(Name,name) values('a',|into Region(Name) values('a'),(}'b')",
       "written twice"},
      {"insert Region{(Name)|} values('a',1)", "1 columns of Region and 2 values"},
      {"insert Region select {ID from Orders|City, 1 from Customer}",
       "2 columns of Region and 1 values"},
      {"insert Region(Name, Zembra_Flag) select City,'{x|}' from Customer", "'x' cannot"},
      {"insert Zembra_DataDict_Table({DDT_ID) values(1|DDT_Name) values(N'表'})",
       "DDT_ID is computed"},
      {"insert UserTb_Region(Code) values('{12345678901|一二三四五六七八九十}')",
       "longer than the 10 characters"},
      {"insert Orders(Amount) values('{much|}')", "'much' cannot"},
      {"insert Orders(Amount) values({Amount|(select max(Amount) from Orders)})",
       "unknown column Amount"},
      {"update Region set {Foo=1|Name='x' where ID='3'}", "unknown column Foo"},
      {"update Region set Name='a', {name='b'|Zembra_Flag=0}", "written twice"},
      {"update Region set {ID=1|Name=ID}", "identity column ID"},
      {"update Zembra_DataDict_Table set {DDT_ID=1|DDT_Status='1'}", "computed"},
      {"update UserTb_Region set Code='{12345678901|1234567890   }'", "longer than"},
      {"update Orders set Amount={sum(Amount)|Amount*2}", "SUM cannot stand in SET"},
      {"update {Orders set CustID|UserTb_Contract set SignDate=0, Title}=getdate()",
       "a date does not convert"},
      {"set identity_insert {Zembra_Policy|Region} on", "no identity column"},
  });
}

TEST(ResolveRefusals, creating) {
  check({
      {"create table T(a int, {A|b} int)", "defined twice"},
      {"create table T(a {blob|nvarchar(max)})", "unknown type blob"},
      {"create table T(a int default '{x|1}')", "'x' cannot"},
      {"create table T(a datetime default {(ID|getdate(}))", "unknown column ID"},
      {"create table T({a int, b as c|b as a*2, a int})", "unknown column c"},
      {"create table T(a {varchar(5) identity|int identity(1,1) primary key})",
       "must be an integer"},
      {"create table T(a int, {primary key(|b int, primary key(a,}b))", "unknown column b"},
      {"create index i on Region({Foo|Name})", "unknown column Foo"},
      {"create {index i on Region(Name,name|unique index i on Region(Name,ID desc})",
       "stands twice"},
  });
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
