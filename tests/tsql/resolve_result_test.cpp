// Titles, kinds and the marks that resolving leaves in the tree.

#include <gtest/gtest.h>

#include "resolve_support.h"

namespace tarlo::tsql::testing {
namespace {

TEST(ResolveResults, titlesAndTypes) {
  const std::pair<const char*, const char*> rows[] = {
      {"select amount, AMOUNT as [Sum it], Amount*2 from Orders",
       "amount:dec(18,2) Sum it:dec(18,2) :dec(20,2)"},
      {"select * from REGION", "ID:int Name:text Zembra_Flag:int"},
      {"select r.*, CITY from Customer c, Region R", "ID:int Name:text Zembra_Flag:int CITY:text"},
      {"select ID, id from Orders", "ID:int id:int"},
      {"select 标题 = Title, 'a'+N'b' b from UserTb_Contract", "标题:text b:text"},
      {"select 1, 1.50, .5, 1e3, 'x', null, 0x1F, 1234567890123456789",
       ":int :dec(3,2) :dec(1,1) :float :text :null :int :dec(19,0)"},
      // + and what stands beside it.
      {"select Qty+'1', '2'+Status, Title+Memo, null+Title, null+Qty from UserTb_Contract",
       ":int :int :text :text :int"},
      {"select SignDate+30, 1+SignDate, EndDate-SignDate, EndDate-1 from UserTb_Contract",
       ":date :date :float :date"},
      // Scales as the server computes them.
      {"select Amount+1, Amount*Discount, Amount/3, Amount/Discount, Qty/2 from UserTb_Contract",
       ":dec(19,2) :dec(37,4) :dec(22,6) :dec(38,20) :int"},
      {"select Amount%7, Amount+1e0, Amount*Discount*Amount from UserTb_Contract",
       ":dec(3,2) :float :dec(38,6)"},
      {"select case when 1=1 then Qty else Amount end, isnull(Qty,'0'), coalesce(null,Qty,1.5), "
       "nullif(Title,'x'), iif(1=1,Title,null) from UserTb_Contract",
       ":dec(18,2) :int :dec(11,1) :text :text"},
      {"select ceiling(Amount), floor(Qty), round(Amount,1), power(Qty,2), abs('5'), sqrt(Qty) "
       "from UserTb_Contract",
       ":dec(38,0) :int :dec(18,2) :int :float :float"},
      {"select count(*), sum(Qty), sum(Amount), avg(Qty), avg(Amount), min(Title), max(SignDate) "
       "from UserTb_Contract",
       ":int :int :dec(38,2) :int :dec(38,6) :text :date"},
      {"select cast(1 as money), cast(1 as numeric), convert(varchar(7),getdate(),120), "
       "cast('' as datetime), cast(1 as real), cast(1 as bit)",
       ":dec(19,4) :dec(18,0) :text :date :float :int"},
      {"select hour(getdate()), datename(dw,getdate()), dateadd(mm,1,getdate()), "
       "datediff(day,'2024-1-1',getdate()), CURRENT_TIMESTAMP",
       ":int :text :date :int :date"},
      {"select -1 as n,'-' as t union select ID,City from Customer", "n:int t:text"},
      {"select null as a union select Amount from Orders union all select 7", "a:dec(18,2)"},
      {"select d.n, d.T from (select ID n, Name as t from Region) d", "n:int T:text"},
      {"select (select top 1 Amount from Orders where CustID=c.ID) x from Customer c",
       "x:dec(18,2)"},
      {"insert Region(Name) values('a'); select @@identity as NeoID", "NeoID:int"},
      {"declare @r varchar(50);exec Zembra_WorkFlowInstance_IsExistsTempMenu 31,@r out;select @r",
       ":text"},
      {"update Region set Name='x'", ""},
  };
  for (const auto& [sql, columns] : rows) EXPECT_EQ(columnsOf(sql), columns) << sql;
}

TEST(ResolveResults, fixedLiterals) {
  const std::pair<const char*, const char*> rows[] = {
      {"select Amount+5, 'x' from Orders where ID=7", ""},
      {"select top 3 ID from Orders where ID>7 order by 1", "3 1 "},
      {"select ID/(2+1), ID%4, round(Amount,1,0), str(ID,6,8) from Orders", "2 1 4 1 0 6 8 "},
      {"select 5+ID from Orders where ID=6 group by ID having count(*)>7 order by ID+8", "5 7 8 "},
      {"select distinct ID+1 from Orders where ID=2 order by ID+1", "1 1 "},
  };
  for (const auto& [sql, fixed] : rows) {
    EXPECT_EQ(fixedLiterals(queryOf(resolveText(sql))), fixed) << sql;
  }
}

const ast::ColumnRef& columnOf(const ast::Expr& expr) {
  return std::get<ast::ColumnRef>(expr.node);
}

TEST(ResolveResults, columnsKnowWhereTheyStand) {
  const auto result = resolveText(
      "select c.City from Orders o join Region r on r.ID=o.ID, Customer c where exists "
      "(select 1 from Region x where x.ID=o.CustID and c.ID in (select ShipTo from Orders "
      "where Amount=o.Amount or City=''))");
  const auto& part = queryOf(result).parts[0];
  const auto& city = columnOf(*part.items[0].expr);
  EXPECT_EQ(city.level, 0);
  EXPECT_EQ(city.source, 2);
  EXPECT_EQ(city.column, 1);
  std::string found;
  const auto collect = [&](const ast::Expr& expr) {
    if (const auto* ref = std::get_if<ast::ColumnRef>(&expr.node)) {
      found += ref->name + std::to_string(ref->level) + std::to_string(ref->source) + " ";
    }
  };
  forEachExpr(*part.where, Subqueries::Enter, collect);
  EXPECT_EQ(found, "ID00 CustID10 ID12 ShipTo00 Amount00 Amount20 City22 ");
}

TEST(ResolveResults, operandsAreWantedAsTheCommonType) {
  const auto result = resolveText(
      "select Qty+'1' from UserTb_Contract where SignDate>'2024-1-5' and Amount=Status and "
      "Title='a long literal is not bound by the column it is compared with............'");
  const auto& part = queryOf(result).parts[0];
  const auto& sum = std::get<ast::Binary>(part.items[0].expr->node);
  EXPECT_EQ(sum.meaning, ast::Meaning::Arithmetic);
  EXPECT_EQ(nameOf(sum.right->type), "text");
  EXPECT_EQ(nameOf(sum.right->wanted), "int");
  std::string wanted;
  const auto collect = [&](const ast::Expr& expr) { wanted += nameOf(expr.wanted) + " "; };
  forEachExpr(*part.where, Subqueries::Enter, collect);
  EXPECT_EQ(wanted, "date date dec(18,2) dec(18,2) text text ");
}

TEST(ResolveResults, orderItemsNameTheirColumn) {
  const auto result = resolveText(
      "select ID, Amount as CustID, ShipTo as x from Orders order by X, custid, 1, Orders.CustID");
  std::vector<int> items;
  for (const auto& item : queryOf(result).orderBy) items.push_back(item.item);
  EXPECT_EQ(items, (std::vector<int>{2, 1, 0, -1}));
}

TEST(ResolveResults, writtenValuesAreWantedAsTheColumn) {
  const auto result = resolveText("insert Region(ID,Name,Zembra_Flag) values(7,8,'9')");
  EXPECT_EQ(result.resolved.explicitIdentityOf, "Region");
  const auto& row = std::get<ast::Insert>(result.batch.statements[0].node).rows[0];
  EXPECT_EQ(row[1].wanted.kind, Kind::Text);
  EXPECT_EQ(row[1].wanted.length, 50);
  EXPECT_EQ(row[2].wanted.kind, Kind::Int);
  EXPECT_EQ(resolveText("insert Region(Name) values('a')").resolved.explicitIdentityOf, "");
}

}  // namespace
}  // namespace tarlo::tsql::testing
