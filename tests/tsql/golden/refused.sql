# Statements that the parser refuses. A line that holds only GO parts them.
select a from T where user_ID = 
GO
insert into T(a,b,c) values(,127,'x')
GO
select a from T where b in ()
GO
select a from T group by 
GO
select [] from T
GO
select a from T where a='x
GO
select a from T where a='x' and)
GO
select [A]>5 as x from T
GO
select a from T where [Qty]
GO
select a from T where [Qty] and b=1
GO
select a from T where a = b = c
GO
select (a=1)+1 from T
GO
select a||b from T
GO
select a from T limit 5
GO
select a::int from T
GO
select a from T where a like 'x' escape '!'
GO
delete from T
GO
drop table T
GO
select 1;select 2
GO
insert into T(a) values(1);update T set a=2
GO
declare @r int;exec P @r out;update T set a=1
GO
select a from Order
GO
select a, from T
GO
select cast(a int) from T
GO
select datepart('yy',d) from T
GO
select a from other.T
GO
select abs(1 from T
GO
select count(*) from (select 1)
GO
set quoted_identifier off
GO
create table T(a int identity(5,1))
GO
select Rank_index From Zembra_User , Zembra_Rank Where User_RankID = Rank_ID and user_ID =
GO
 Select User_joinGroupID From Zembra_User where User_ID = 
GO
 insert into Zembra_OperateLog(OperateLog_UID,OperateLog_ModulID,OperateLog_SQL) values(,,'x')
GO
select Rank_ID , Rank_name from Zembra_Rank Where Rank_Index < =   order by Rank_Index
GO
SELECT Exper_SID FROM Zembra_ExchangePermission WHERE   ExPer_RID =              AND ExPer_Para = 31
GO
DECLARE  @strReturn varchar(50);EXEC Zembra_WorkFlowInstance_IsExistsTempMenu ,@strReturn out;SELECT @strReturn
GO
select 1 from UserTb_Contract,UserTb_Customer where Name=
GO
select [Customer].[ID],[Customer].[City] from  where [].Zembra_Flag <> 0
GO
select [Customer].[ID] from Customer where []. Zembra_Flag <> 0
GO
select [A] from [T] group by 
GO
select  from [T] where [A]=1
GO
update Zembra_Query_Main set Query_MultiRel=,Query_MultiRelSel='' where Query_ID=7
GO
select Zembra_ID from Zembra_DataDict_Relation where Zembra_ID in ()
GO
select Zembra_ID,DDF_CName from Zembra_DataDict_Field union select -1,'it's'
GO
select a from [T] where ( [T].[a] = 'x'y' )
GO
select a from [T] where ( [T].[a] = 'x' a)
GO
select [T].[a] as [x] from [T] where [T].[b]=1 and 
GO
select a from T where a=1; drop table T
GO
select a from T where a=1; update T set a=2
GO
select a from T where a=1 update T set a=2
GO
insert into T(a) values(1); select @@identity; select 1
GO
set nocount on select 1
GO
exec P @r out; select @r
GO
declare @r int
GO
select top a b from T
GO
select top 5
GO
select case when a=1 end from T
GO
select case end from T
GO
select convert(varchar(7),a,'120') from T
GO
select a b c from T
GO
select a from T a b
GO
select a from T join U
GO
select a from T where a between 1
GO
select a from T where a is 1
GO
select a from T where not a
GO
select a from T where exists (1)
GO
select a from T having
GO
select a from T order a
GO
truncate table T
GO
select /* never closed
GO
select "never closed from T
GO
select a from T
where b = 'c'
  and
GO
select a '' from T
GO
select a 'two
lines' from T
GO
