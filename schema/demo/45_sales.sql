-- Sales: quotes, contracts, orders with their lines, deliveries and returns.

CREATE TABLE UserTb_Quote (
  Zembra_ID int IDENTITY PRIMARY KEY,
  BillNo nvarchar(30),
  CustID int,
  SalesmanID int,
  QuoteDate datetime,
  ValidDays int,
  Amount decimal(18,2),
  Status int,
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Quote_CustID ON UserTb_Quote (CustID)
GO
CREATE INDEX IX_Quote_SalesmanID ON UserTb_Quote (SalesmanID)
GO
CREATE TABLE UserTb_Contract (
  Zembra_ID int IDENTITY PRIMARY KEY,
  ContractNo nvarchar(30),
  Title nvarchar(100),
  CustID int,
  AgentID int,
  Amount decimal(18,2),
  Discount decimal(18,2),
  SignDate datetime,
  EndDate datetime,
  Status int,
  Remark nvarchar(500),
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Contract_CustID ON UserTb_Contract (CustID)
GO
CREATE INDEX IX_Contract_AgentID ON UserTb_Contract (AgentID)
GO
CREATE TABLE UserTb_Order (
  Zembra_ID int IDENTITY PRIMARY KEY,
  BillNo nvarchar(30),
  BillToID int,
  ShipToID int,
  ContractID int,
  SalesmanID int,
  OrderDate datetime,
  DueDate datetime,
  Amount decimal(18,2),
  Discount decimal(18,2),
  Status int,
  Remark nvarchar(500),
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Order_BillToID ON UserTb_Order (BillToID)
GO
CREATE INDEX IX_Order_ShipToID ON UserTb_Order (ShipToID)
GO
CREATE INDEX IX_Order_ContractID ON UserTb_Order (ContractID)
GO
CREATE INDEX IX_Order_SalesmanID ON UserTb_Order (SalesmanID)
GO
CREATE TABLE UserTb_SaleLine (
  Zembra_ID int IDENTITY PRIMARY KEY,
  OrderID int,
  ProductID int,
  Qty int,
  Price decimal(18,2),
  Amount decimal(18,2),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_SaleLine_OrderID ON UserTb_SaleLine (OrderID)
GO
CREATE INDEX IX_SaleLine_ProductID ON UserTb_SaleLine (ProductID)
GO
CREATE TABLE UserTb_Delivery (
  Zembra_ID int IDENTITY PRIMARY KEY,
  BillNo nvarchar(30),
  OrderID int,
  WarehouseID int,
  ShipDate datetime,
  Carrier nvarchar(30),
  Freight decimal(18,2),
  SignedBy nvarchar(30),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Delivery_OrderID ON UserTb_Delivery (OrderID)
GO
CREATE INDEX IX_Delivery_WarehouseID ON UserTb_Delivery (WarehouseID)
GO
CREATE TABLE UserTb_Return (
  Zembra_ID int IDENTITY PRIMARY KEY,
  BillNo nvarchar(30),
  OrderID int,
  ReturnDate datetime,
  Amount decimal(18,2),
  Reason nvarchar(200),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Return_OrderID ON UserTb_Return (OrderID)
GO

INSERT INTO UserTb_Quote (BillNo, CustID, SalesmanID, QuoteDate, ValidDays, Amount, Status)
SELECT 'QT' + RIGHT('00000' + CAST(n.N AS varchar(10)), 5), n.N * 31 % 400 + 1, n.N % 9 + 5,
  DATEADD(day, -(1095 - n.N * 1095 / 600), '2026-11-01'), CASE n.N % 3 WHEN 0 THEN 15 ELSE 30 END,
  (n.N * 877 % 3000 + 40) * 95.5, CASE WHEN n.N > 570 THEN 1 WHEN n.N % 3 = 0 THEN 3 ELSE 2 END
FROM Demo_Number n WHERE n.N <= 600
ORDER BY n.N
GO
INSERT INTO UserTb_Contract (ContractNo, Title, CustID, AgentID, Amount, Discount, SignDate, EndDate, Status, Remark)
SELECT 'HT' + RIGHT('0000' + CAST(n.N AS varchar(10)), 4),
  c.City + CASE n.N % 4 WHEN 0 THEN N'年度框架采购合同' WHEN 1 THEN N'设备供货合同' WHEN 2 THEN N'备件供应合同' ELSE N'产线改造合同' END,
  c.Zembra_ID, CASE WHEN n.N % 4 = 3 THEN NULL ELSE n.N * 53 % 400 + 1 END,
  (n.N * 613 % 900 + 30) * 1000, (n.N * 613 % 900 + 30) * (n.N % 6) * 10,
  DATEADD(day, -(1095 - n.N * 1095 / 500), '2026-11-01'),
  DATEADD(day, -(1095 - n.N * 1095 / 500) + 365 + n.N % 3 * 180, '2026-11-01'),
  CASE WHEN n.N > 480 THEN 0 WHEN n.N % 41 = 0 THEN 3 WHEN n.N < 250 THEN 2 ELSE 1 END,
  CASE n.N % 8 WHEN 2 THEN N'含安装调试' WHEN 6 THEN N'质保金百分之五，一年后付' ELSE NULL END
FROM Demo_Number n, UserTb_Customer c
WHERE n.N <= 500 AND c.Zembra_ID = n.N * 37 % 400 + 1
ORDER BY n.N
GO
UPDATE UserTb_Contract SET Remark = '' WHERE Zembra_ID = 7
GO
UPDATE UserTb_Contract SET Title = N'年度框架采购合同  ' WHERE Zembra_ID = 12
GO
UPDATE UserTb_Contract SET Title = N'"星火"产线改造合同（客户称 Line ''A''）' WHERE Zembra_ID = 19
GO
UPDATE UserTb_Contract SET EndDate = '2031-12-31', Remark = N'长期框架，五年' WHERE Zembra_ID IN (441, 452, 463, 474)
GO
-- An order under a contract is the contract's customer's.
INSERT INTO UserTb_Order (BillNo, BillToID, ShipToID, ContractID, SalesmanID, OrderDate, DueDate, Amount, Discount, Status, Remark)
SELECT 'SO' + RIGHT('00000' + CAST(n.N AS varchar(10)), 5), ISNULL(c.CustID, n.N * 31 % 400 + 1),
  CASE WHEN n.N % 5 = 0 THEN n.N * 59 % 400 + 1 ELSE ISNULL(c.CustID, n.N * 31 % 400 + 1) END,
  c.Zembra_ID, n.N % 9 + 5, DATEADD(day, -(1095 - n.N * 1095 / 2000), '2026-11-01'),
  DATEADD(day, -(1095 - n.N * 1095 / 2000) + 12 + n.N % 30, '2026-11-01'), 0, 0,
  CASE WHEN n.N > 1970 THEN 0 WHEN n.N > 1930 THEN 1 WHEN n.N > 1890 THEN 2 WHEN n.N % 53 = 0 THEN 5
    WHEN n.N > 1800 THEN 3 ELSE 4 END,
  CASE n.N % 11 WHEN 3 THEN N'客户要求加急' WHEN 8 THEN N'木箱包装，防潮' ELSE NULL END
FROM Demo_Number n LEFT JOIN UserTb_Contract c ON c.Zembra_ID = n.N * 7 % 500 + 1 AND n.N % 3 <> 0
WHERE n.N <= 2000
ORDER BY n.N
GO
INSERT INTO UserTb_SaleLine (OrderID, ProductID, Qty, Price, Amount)
SELECT o.Zembra_ID, p.Zembra_ID, (o.Zembra_ID * 13 + n.N * 29) % 20 + 1, p.ListPrice,
  p.ListPrice * ((o.Zembra_ID * 13 + n.N * 29) % 20 + 1)
FROM UserTb_Order o, Demo_Number n, UserTb_Product p
WHERE n.N <= o.Zembra_ID % 4 + 1 AND p.Zembra_ID = (o.Zembra_ID * 37 + n.N * 53) % 240 + 1
ORDER BY o.Zembra_ID, n.N
GO
UPDATE UserTb_Order
SET Amount = (SELECT SUM(d.Amount) FROM UserTb_SaleLine d WHERE d.OrderID = UserTb_Order.Zembra_ID)
GO
UPDATE UserTb_Order SET Discount = ROUND(Amount * (Zembra_ID % 4) * 0.02, 2)
GO
INSERT INTO UserTb_Delivery (BillNo, OrderID, WarehouseID, ShipDate, Carrier, Freight, SignedBy)
SELECT 'FH' + RIGHT('00000' + CAST(o.Zembra_ID AS varchar(10)), 5), o.Zembra_ID, o.Zembra_ID % 2 * 3 + 1,
  DATEADD(day, -(o.Zembra_ID % 4), o.DueDate),
  CASE o.Zembra_ID % 4 WHEN 0 THEN N'顺达物流' WHEN 1 THEN N'长风货运' WHEN 2 THEN N'客户自提' ELSE N'公司车队' END,
  CASE o.Zembra_ID % 4 WHEN 2 THEN 0 ELSE 80 + o.Zembra_ID * 17 % 900 END,
  CASE o.Status WHEN 4 THEN s.Word + N'先生' ELSE NULL END
FROM UserTb_Order o, Demo_Surname s
WHERE o.Status IN (3, 4) AND o.Zembra_ID % 8 <> 0 AND s.ID = o.Zembra_ID % 41
ORDER BY o.Zembra_ID
GO
INSERT INTO UserTb_Return (BillNo, OrderID, ReturnDate, Amount, Reason)
SELECT 'TH' + RIGHT('00000' + CAST(o.Zembra_ID AS varchar(10)), 5), o.Zembra_ID, DATEADD(day, 9, o.DueDate),
  ROUND(o.Amount * 0.1, 2),
  CASE o.Zembra_ID % 3 WHEN 0 THEN N'尺寸超差' WHEN 1 THEN N'客户订错型号' ELSE N'运输磕碰' END
FROM UserTb_Order o WHERE o.Status = 4 AND o.Zembra_ID % 19 = 0
ORDER BY o.Zembra_ID
GO

UPDATE UserTb_Quote SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, QuoteDate), OwnerID = SalesmanID
GO
UPDATE UserTb_Contract SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, SignDate), OwnerID = Zembra_ID % 20 + 3
GO
UPDATE UserTb_Order SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, OrderDate), OwnerID = SalesmanID
GO
UPDATE UserTb_SaleLine SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 5000, '2023-11-02'))
GO
UPDATE UserTb_Delivery SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, ShipDate)
GO
UPDATE UserTb_Return SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, ReturnDate)
GO
