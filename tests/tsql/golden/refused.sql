# One refused statement a line.
select a from T where user_ID = 
insert into T(a,b,c) values(,127,'x')
select a from T where b in ()
select a from T group by 
select [] from T
select a from T where a='x
select a from T where a='x' and)
select [A]>5 as x from T
select a from T where [Qty]
select a from T where [Qty] and b=1
select a from T where a = b = c
select (a=1)+1 from T
select a||b from T
select a from T limit 5
select a::int from T
select a from T where a like 'x' escape '!'
delete from T
drop table T
select 1;select 2
insert into T(a) values(1);update T set a=2
declare @r int;exec P @r out;update T set a=1
select a from Order
select a, from T
select cast(a int) from T
select datepart('yy',d) from T
select a from other.T
select abs(1 from T
select count(*) from (select 1)
set quoted_identifier off
create table T(a int identity(5,1))
