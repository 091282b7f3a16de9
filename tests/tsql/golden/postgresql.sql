select ID, Amount from Orders where CustID=5 and Amount>'7'
GO
select top 3 ID from Orders where ID<>-7 order by Amount desc, ShipTo
GO
select ID from Orders order by Amount offset 30 rows fetch next 15 rows only
GO
select ID from Orders order by Amount offset 30 rows
GO
select Policy_Name from Zembra_Policy
GO
select City, RegionID from Customer order by 1, RegionID desc
GO
select ID from Customer where City='paris' and City<>isnull(City,'')
GO
select ID from Customer where City<'m' or City between 'a' and City
GO
select ID from Customer where City in ('a','b') and City not in (City,'c') and RegionID in (1,2)
GO
select ID from Customer where City in (select Name from Region) and RegionID not in (select ID from Region)
GO
select ID from Customer where City like '%a[b-d]_' and RegionID not like '1%'
GO
select case City when 'a' then 1 else RegionID end, case when City='b' then null else 2.5 end from Customer
GO
select distinct City, RegionID from Customer
GO
select distinct RegionID from Customer order by RegionID desc
GO
select City, count(*) from Customer group by City having max(City)>'a' order by City+'x'
GO
select City+'x', count(distinct City), min(City), sum(RegionID), avg(RegionID) from Customer group by City
GO
select c.City, (select count(*) from Region r where r.Name=c.City) from Customer c group by c.City
GO
select sum(Amount), avg(Amount), max(ID), count(distinct CustID), count(Amount) from Orders
GO
select -1, '--' union select ID, City from Customer
GO
select 5 union select ID from Orders union all select top 2 ID from Region order by 1
GO
select Name from Region union all select City from Customer order by 1 desc
GO
select o.ID, c.City from Orders o full join Customer c on o.CustID=c.ID and c.City='x'
GO
select o.ID from Orders o cross join Region r, (select City from Customer where ID=1) d where d.City='a'
GO
select ID from Orders where Amount=(select max(Amount) from Orders) and exists (select 1 from Region)
GO
select Amount/3, Amount*Amount, Amount+1, ID/2, ID%2, Amount%7, 1e0*ID, 7.5e0%ID, ID&3|4^1, ~ID, -Amount from Orders
GO
select Title+'1', Qty+'1', 'a'+null, Memo*2 from UserTb_Contract
GO
select SignDate+30, SignDate-Amount, EndDate-SignDate, getdate()-1 from UserTb_Contract
GO
select cast(Amount as int), cast(Title as int), cast(Amount as varchar), cast(Qty as char(5)), cast(Title as varchar(5)), cast(SignDate as int), cast(Qty as tinyint), cast(Title as decimal(9,3)), cast(Qty as bit), cast(SignDate as date), cast(Qty as datetime), cast(1e0*Qty as nvarchar(9)) from UserTb_Contract
GO
select convert(varchar(7),SignDate,120), convert(varchar(30),SignDate), SignDate from UserTb_Contract where SignDate>'2024-1-5' and SignDate>Title
GO
select year(SignDate), datepart(wk,SignDate), datepart(dw,SignDate), datepart(ss,SignDate), datepart(ms,SignDate), datename(dw,SignDate), datename(mm,SignDate) from UserTb_Contract
GO
select datediff(dd,SignDate,EndDate), datediff(hh,SignDate,EndDate), datediff(mm,SignDate,EndDate), datediff(wk,SignDate,EndDate), dateadd(mm,1,SignDate), dateadd(dd,Qty,SignDate) from UserTb_Contract
GO
select len(Title), left(Title,2), charindex('a',Title), str(Amount,10,2), str(Amount), replace(Title,'a','b'), isnull(Title,''), nullif(Title,'a'), nullif(Qty,1), isnumeric(Title), isnumeric(Qty), substring(Title,Qty,2), char(Qty), concat(Title,Qty) from UserTb_Contract
GO
select round(Amount,1), round(Qty,-1), round(Amount,1,1), round(1e0*Amount,Qty), ceiling(Amount), ceiling(Qty), sign(Qty), power(Qty,2), power(Amount,2), sqrt(Qty), log(Amount) from UserTb_Contract
GO
select null, 'x' as c, 0x1F, .5, 1e3, 12345678901234567890
GO
insert Region(Name) values('x'),(5);select @@identity as NeoID
GO
insert Region(ID,Name) values(7,'a'),(9,'b') select scope_identity()
GO
insert Region(ID,Name) select ID, City from Customer
GO
insert UserTb_Contract(Title,Amount,Qty) select City, ID/3.0, ID/3.0 from Customer
GO
update UserTb_Contract set Title=Title+'z', Amount=Amount/3, Qty=Amount, SignDate='2024-1-5', Memo=Qty where Title='a'
GO
declare @r varchar(50);exec Zembra_WorkFlowInstance_IsExistsTempMenu 31,'x',@r out;select @r
GO
create table NewOne (ID int identity primary key, Name nvarchar(20) not null default 'x', Note nvarchar(max), Amount decimal(9,2) default 1.5, Big bigint, Price float, Made datetime default getdate(), Twice as ID*2, Part as left(Name,1))
GO
create table TextKey (Name nvarchar(20), N int, primary key (Name, N))
GO
alter table Region add Area nvarchar(5) default 'x'
GO
create unique index RegionName on Region (Name, Zembra_Flag desc)
GO
create table ThisNameIsLongerThanSixtyThreeBytesWhichIsWhatTheEngineKeepsOfNames (ID int)
GO
create table Keyless (ID int identity)
GO
select 'a' as c, @x from Region
GO
select ID from Orders where CustID=3000000000 group by ID having count(*)>3000000000
