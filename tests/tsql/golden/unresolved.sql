# Statements that parse, and that must be refused when they are resolved or run. A line that holds only GO parts them.

# Grouping. The key put in front of a scheme with grouping is the case that callers rely on.
select [Customer].[ID],SUM([Orders].[Amount]) as [Order.Sum],([Customer].[City]) as [Client.Town] from [Orders],Customer where [Orders].[Zembra_Flag]=1 and  [Orders].[CustID]=[Customer].[ID] group by [Customer].[City]
GO
select [Orders].[ID],SUM([Orders].[Amount]) as [Order.Sum] from [Orders]
GO
select COUNT(*) from [Orders] group by 1
GO
select [Orders].[ID] from [Orders] where SUM([Orders].[Amount]) > 1
GO
select SUM([UserTb_Contract].[Title]) as [t] from [UserTb_Contract]
GO
select AVG([UserTb_Contract].[SignDate]) as [t] from [UserTb_Contract]
GO

# Names.
select [Customer].[ID],[Orders].[Amount] from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and Zembra_Flag <> 0
GO
select [UserTb_Customer].[Zembra_ID] from [UserTb_Contract]
GO
select [Gone].[ID] from [Gone]
GO
select "Gone" from [Orders]
GO
select [Orders].[ID] from [Orders],[Orders]
GO
declare @r varchar(50);exec Gone 31,@r out;select @r
GO
select LENGTH([UserTb_Contract].[Title]) from [UserTb_Contract]
GO
select IFNULL([UserTb_Contract].[Title],'') from [UserTb_Contract]
GO
select NOW()
GO
select SUBSTR([UserTb_Contract].[Title],1,2) from [UserTb_Contract]
GO
select ABS() from [UserTb_Contract]
GO

# Values that do not convert, found while translating or at the first row.
select [UserTb_Contract].[Title] as [t] from [UserTb_Contract] where ( [UserTb_Contract].[Qty] > '5.5' )
GO
select [UserTb_Contract].[Title] as [t] from [UserTb_Contract] where ( [UserTb_Contract].[Qty] > 'abc' )
GO
select [UserTb_Contract].[Title] as [t] from [UserTb_Contract] where ( [UserTb_Contract].[SignDate] > '2024-13-40' )
GO
select [UserTb_Contract].[Title]*2 as [t] from [UserTb_Contract]
GO
select [UserTb_Contract].[Qty]/0 as [t] from [UserTb_Contract]
GO
select (select Product from UserTb_Item) as [t] from [UserTb_Contract]
GO

# Form.
select distinct [Orders].[Amount] from [Orders] order by [Orders].[ID]
GO
select 1,2 union select 1
GO
create table Zembra_New (a int)
