# Statements that the compilers make of schemes, and those that controls keep, over business tables. A line that holds
# only GO parts them.

# The eight forms of a scheme.
select [Customer].[ID] as [Client.Key],[Customer].[City] as [Client.Town],[Orders].[ID] as [Order.Key],[Orders].[Amount] as [Order.Sum],[Orders].[CustID] as [Order.Cust] from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1
GO
select [Customer].[ID] as [Client.Key],[Orders].[ID] as [Order.Key],[Orders].[Amount]*2 as [Net] from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1
GO
select [Customer].[ID] as [Client.Key],[Orders].[ID] as [Order.Key] from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1 and ( [Orders].[Amount] > '500' and [Customer].[City] = 'Paris' )
GO
select [Orders].[ID] as [Order.Key],[Orders].[Amount]*2 as [Net] from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1 and ( [Orders].[Amount]*2 > '100')
GO
select SUM([Orders].[Amount]) as [Order.Sum],([Customer].[City]) as [Client.Town] from [Orders],Customer where [Orders].[Zembra_Flag]=1 and  [Orders].[CustID]=[Customer].[ID] group by [Customer].[City]
GO
select SUM([Orders].[Amount]*2) as [Net],([Customer].[City]) as [Client.Town] from [Orders],Customer where [Orders].[Zembra_Flag]=1 and  [Orders].[CustID]=[Customer].[ID] group by [Customer].[City]
GO
select SUM([Orders].[Amount]) as [Order.Sum],([Customer].[City]) as [Client.Town] from [Orders],Customer where [Orders].[Zembra_Flag]=1 and  [Orders].[CustID]=[Customer].[ID] and ( [Orders].[Amount] > '500' ) group by [Customer].[City]
GO
select SUM([Orders].[Amount]*2) as [Net],([Customer].[City]) as [Client.Town] from [Orders],Customer where [Orders].[Zembra_Flag]=1 and  [Orders].[CustID]=[Customer].[ID] and ( [Orders].[Amount]*2 > '100') group by [Customer].[City]
GO
select [Orders].[ID] as [Order.Key] from [Orders] where [Orders].[Zembra_Flag]=1
GO

# Aliases, two hops, filters in every form.
select [Customer].[City] as [Client.Town],[Customer1].[City] as [Client.Town1],[Orders].[ID] as [Order.Key] from [Customer],[Customer] as [Customer1],[Orders] where [Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and [Orders].[ShipTo]=[Customer1].[ID] and [Customer1].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1 and ( [Customer1].[City] = 'Paris' )
GO
select [Region].[Name] as [Area.Name],[Orders].[ID] as [Order.Key] from [Customer],[Customer] as [Customer1],[Region],[Orders] where [Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and [Orders].[CustID]=[Customer1].[ID] and [Customer].[ID]=[Region].[ID] and [Region].[Zembra_Flag]=1 and [Orders].[Zembra_Flag]=1
GO
select [UserTb_Contract].[Title] as [合同.标题] from [UserTb_Contract] where [UserTb_Contract].[Zembra_Flag]=1 and ( [UserTb_Contract].[Title] Like '%甲[a-c]%' and [UserTb_Contract].[Memo] Not Like '%x_%' or [UserTb_Contract].[SignDate] >= '2024-1-5' and [UserTb_Contract].[EndDate] >GETDATE()-30 and [UserTb_Contract].[Qty] <> '5' or [UserTb_Contract].[Amount] =(1+2)*3 )
GO
select [UserTb_Contract].[Title] as [合同.标题] from [UserTb_Contract] where [UserTb_Contract].[Zembra_Flag]=1 and ( [UserTb_Contract].[SignDate]  =(select max(SignDate) from UserTb_Contract) or [UserTb_Contract].[Discount]  >([UserTb_Contract].[Amount]) and[UserTb_Contract].[EndDate] <CAST('2030-1-1' AS datetime))
GO
select [UserTb_Contract].[Title] as [t] from [UserTb_Contract] where [UserTb_Contract].[Zembra_Flag]=1 and ( [UserTb_Contract].[Amount]-[UserTb_Contract].[Discount] >= '100'and YEAR([UserTb_Contract].[SignDate]) = '2024' or [UserTb_Contract].[Amount]+0 > '-1')
GO
select [UserTb_Contract].[Title] as [t] from [UserTb_Contract] where [UserTb_Contract].[Zembra_Flag]=1 and ( [UserTb_Contract].[Status] = '1'and([UserTb_Contract].[Qty] > -1and[UserTb_Contract].[Qty]<30or[UserTb_Contract].[Memo] is null))
GO

# Statistics and grouping.
select MAX([UserTb_Contract].[Amount]) as [合同.金额],MIN([UserTb_Contract].[SignDate]) as [合同.签订],AVG([UserTb_Contract].[Qty]) as [合同.数量],COUNT([UserTb_Contract].[Memo]) as [合同.备注],([UserTb_Customer].[City]) as [客户.城市] from [UserTb_Contract],UserTb_Customer where [UserTb_Contract].[Zembra_Flag]=1 and  [UserTb_Contract].[CustID]=[UserTb_Customer].[Zembra_ID] group by [UserTb_Customer].[City]
GO
select SUM([UserTb_Contract].[Amount]) as [合同.金额],MAX([UserTb_Contract].[Amount]) as [合同.金额] from [UserTb_Contract] where [UserTb_Contract].[Zembra_Flag]=1
GO
select (YEAR([UserTb_Contract].[SignDate])) as [年份],SUM([UserTb_Contract].[Amount]-[UserTb_Contract].[Discount]) as [差额],COUNT([UserTb_Contract].[Qty]*2) as [数] from [UserTb_Contract] where [UserTb_Contract].[Zembra_Flag]=1 group by YEAR([UserTb_Contract].[SignDate]),[UserTb_Contract].[Status]
GO
select SUM([Orders].[Amount]) as [Order.Sum],([Customer].[City]) as [Client.Town] from [Orders],Customer where [Orders].[Zembra_Flag]=1 and  [Orders].[CustID]=[Customer].[ID] group by [Customer].[City] having 1 = 0
GO

# Controls: drop-downs, cascades, lists, option sources, and what is added behind a stored statement.
select [Customer].[ID],[Customer].[City] from [Customer] where [Customer].Zembra_Flag<> 0 and ([Customer].[City] = 'A' )
GO
select [Customer].[ID],[Orders].[Amount] from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and [Orders].Zembra_Flag <> 0
GO
select [Customer].[ID],[Customer].[City] from [Customer] where [Customer]. Zembra_Flag <> 0
GO
select [UserTb_Customer].[Zembra_ID],[UserTb_Customer].[Name] from [UserTb_Customer] where Zembra_Flag<>0
GO
select [UserTb_Customer].[Zembra_ID],[UserTb_Customer].[Name] from UserTb_Customer where Zembra_Flag <> 0 and ([UserTb_Customer].[Kind] Like '%A%' )
GO
select [Customer].[ID],[Customer].[City] as [客户.城市],[Orders].[Amount]*2 as [Net] from [Customer],[Orders] where [Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1
GO
select 1 as tempidcolumn_V1,SUM([Orders].[Amount]) as [Order.Sum],([Customer].[City]) as [Client.Town] from [Orders],Customer where [Orders].[Zembra_Flag]=1 and  [Orders].[CustID]=[Customer].[ID] group by [Customer].[City]
GO
select -1,[Orders].[Amount] as [Sum] from [Orders] where 1=1  And 1<>1
GO
select 1 from UserTb_Contract,UserTb_Customer where CustID=UserTb_Customer.Zembra_ID
GO
select count(*) from [Orders] a, [Customer] b where a.CustID=b.ID and 1 = 0
GO
select a.Zembra_ID,(select sum(Qty*Price) from UserTb_Item where ContractID=a.Zembra_ID) as [合计] from [UserTb_Contract] as a where exists (select 1 from UserTb_Item i where i.ContractID=a.Zembra_ID and i.Qty between 1 and 10)
GO
update UserTb_Contract set Status=2,Memo='it''s',EndDate='2024-12-31',Amount='1000.005',Qty='' where Zembra_ID=1
GO
insert UserTb_Item(ContractID,Product,Qty,Price) values(1,'笔',3,2.5)
GO
