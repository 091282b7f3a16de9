# One statement a line.
select -100 / -100 * 10, -(a+b)*2, a-(b-c), (a-b)-c, - -1, ~(-x), 5&1+1
select a from T where not x in (1,2) and (b=1 or c=2) or not (d=3 and e is not null)
SELECT TOP 5 /* Zembra_ID ,*/ [a.b], T.* FROM T WHERE Rank_Index < = 3and[T].[c]='x' and[d] not like '%y%'
select ss = case when a=1then 1else 0end, DDF_Type= case b when 1 then 'x' else null end from T
select a x, a 'y', a as [别名], a AS 标题 from dbo.T as u with (nolock), V left outer join W on u.a=W.a cross join Q
select -1,'--选择字段--' union select Query_ID,Query_Name from Zembra_Query_Main where Query_ID in (select x from Y) order by 1 desc, 2
select a, COUNT(*), count(distinct b), sum(c*2) from T group by a having 1 = 0
select datepart (yy,d)as y, convert(varchar(7),getdate(),120), cast(a as decimal(18,2)), iif(a>1,'x','y'), CURRENT_TIMESTAMP, left(a,2), cast(b as nvarchar(max)) from T
select x from (select a x from U) d where exists (select 1) and a between 1+1 and (select top (1) b from V) and c collate Chinese_PRC_CI_AS = 'x'
insert Zembra_OperateLog(OperateLog_UID,OperateLog_SQL) values(127,'it''s'),(-1,N'x')
insert into T(a) select b from U;select @@identity as NeoID
set nocount on insert into T(a) values(1) select SCOPE_IDENTITY() as NeoID
declare @r varchar(50);exec P 31,@r out;select @r
update T set a='x',b=b+1 where Zembra_ID=3;
set identity_insert dbo.T on
create table T(a int identity(1,1) primary key, b nvarchar(20) not null constraint df default('x'), c as a*2 persisted, d decimal(18,2) default 0 null)
create table [T](a int not null, b int, constraint pk primary key (a,b))
create unique index I on T(a desc,b)
select [a]]b], [select] from [order] where ('orvane'='orvane') and 1 = 1
