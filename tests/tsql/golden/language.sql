# What the language may hold, whatever the tables. A line that holds only GO parts the statements.
select -100 / -100 * 10, -(a+b)*2, a-(b-c), (a-b)-c, - -1, ~(-x), 5&1+1
GO
select a from T where not x in (1,2) and (b=1 or c=2) or not (d=3 and e is not null)
GO
SELECT TOP 5 /* Zembra_ID ,*/ [a.b], T.* FROM T WHERE Rank_Index < = 3and[T].[c]='x' and[d] not like '%y%'
GO
select ss = case when a=1then 1else 0end, DDF_Type= case b when 1 then 'x' else null end from T
GO
select a x, a 'y', a as [别名], a AS 标题 from dbo.T as u with (nolock), V left outer join W on u.a=W.a cross join Q
GO
select -1,'--选择字段--' union select Query_ID,Query_Name from Zembra_Query_Main where Query_ID in (select x from Y) order by 1 desc, 2
GO
select a, COUNT(*), count(distinct b), sum(c*2) from T group by a having 1 = 0
GO
select datepart (yy,d)as y, convert(varchar(7),getdate(),120), cast(a as decimal(18,2)), iif(a>1,'x','y'), CURRENT_TIMESTAMP, left(a,2), cast(b as nvarchar(max)) from T
GO
select x from (select a x from U) d where exists (select 1) and a between 1+1 and (select top (1) b from V) and c collate Chinese_PRC_CI_AS = 'x'
GO
insert Zembra_OperateLog(OperateLog_UID,OperateLog_SQL) values(127,'it''s'),(-1,N'x')
GO
insert into T(a) select b from U;select @@identity as NeoID
GO
set nocount on insert into T(a) values(1) select SCOPE_IDENTITY() as NeoID
GO
declare @r varchar(50);exec P 31,@r out;select @r
GO
update T set a='x',b=b+1 where Zembra_ID=3;
GO
set identity_insert dbo.T on
GO
create table T(a int identity(1,1) primary key, b nvarchar(20) not null constraint df default('x'), c as a*2 persisted, d decimal(18,2) default 0 null)
GO
create table [T](a int not null, b int, constraint pk primary key (a,b))
GO
create unique index I on T(a desc,b)
GO
select [a]]b], [select] from [order] where ('orvane'='orvane') and 1 = 1
GO
select [a.b],[a]]b],"q""x",标题,_x,#t,a$1,@@IDENTITY from [a.b] as "q",[#t]
GO
select '--选择字段--','/* no comment */',N'it''s','' from T -- the rest is a comment
where /* /* nested */ still */ a=1
GO
select a from T where a < = 3 and b > = 4 and c < > 5 and d ! = 6 and e!=7 and f!<8 and g !> 9
GO
select a from T where a=-1and b<30and(c='x')and[T].[d]='y'or'z'=e
GO
select CAST (a AS int),DATEPART (yy,b)AS c,COUNT (*) from T
GO
select 0x1F,.5,5.,1e3,1E-2,1.5e+10,12345678901234567890
GO

  select　a	from T 
GO
select a
     , b as [x]
  from T
 where a = 'line one
line two'
GO
select case when a=1 or b=2 and not c=3 then 1 end,case a when 1 then case b when 2 then 3 end else 4 end from T
GO
select a from T where not(not a=1)and not(b=1 and c=2)and(d=1 or e=2)and((f=1)or((g=2)))
GO
select a from T where a not between -1 and b+1 and c not like d+'%' and e is not null and f not in (select g from U union select 1) and not exists (select 1 from V)
GO
select distinct all_ as [a],count(all b),max(distinct c) from T
GO
select a+b-c*d/e%f&g|h^~i,(a+b)*(c-d),a-(b+c),-(a*b),(-a)*b,-a*b,+a from T
GO
select all a from T full outer join U on a=b right join V on c=d inner join W on (e=f and g=h)
GO
select a from T union all select b from U union select c from V order by a desc,2 asc
GO
select 'a' 'title',1 [1],getdate() now from T t,dbo.U as u with(nolock)
GO
insert into [dbo].[T] values(1,null,default_),(a,-1,'x')
GO
exec P
GO
execute [dbo].[P] 1,'x',null
GO
set nocount on;declare @r as nvarchar(max);exec P @r output;select @R;
GO
create table T([a b] nvarchar(max) null,b datetime default getdate() not null,c decimal(18,2) constraint df default(0),d as (a+b),primary key nonclustered([a b]))
GO
create nonclustered index I on dbo.T([a b] asc,b desc)
GO
