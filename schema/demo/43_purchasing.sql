-- Purchasing: suppliers, purchase orders with their lines, ratings.

CREATE TABLE UserTb_Supplier (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Code nvarchar(20),
  Name nvarchar(100),
  City nvarchar(30),
  Grade nvarchar(10),
  PayDays int,
  Phone nvarchar(30),
  Remark nvarchar(500),
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE TABLE UserTb_Purchase (
  Zembra_ID int IDENTITY PRIMARY KEY,
  BillNo nvarchar(30),
  SupplierID int,
  BuyerID int,
  BillDate datetime,
  NeedDate datetime,
  Amount decimal(18,2),
  Status int,
  Remark nvarchar(500),
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Purchase_SupplierID ON UserTb_Purchase (SupplierID)
GO
CREATE INDEX IX_Purchase_BuyerID ON UserTb_Purchase (BuyerID)
GO
CREATE TABLE UserTb_BuyLine (
  Zembra_ID int IDENTITY PRIMARY KEY,
  PurchaseID int,
  ProductID int,
  Qty int,
  Price decimal(18,2),
  Amount decimal(18,2),
  ArrivedQty int,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_BuyLine_PurchaseID ON UserTb_BuyLine (PurchaseID)
GO
CREATE INDEX IX_BuyLine_ProductID ON UserTb_BuyLine (ProductID)
GO
CREATE TABLE UserTb_Rating (
  Zembra_ID int IDENTITY PRIMARY KEY,
  SupplierID int,
  Period nvarchar(10),
  Quality int,
  Service int,
  PriceScore int,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Rating_SupplierID ON UserTb_Rating (SupplierID)
GO

INSERT INTO UserTb_Supplier (Code, Name, City, Grade, PayDays, Phone, Remark)
SELECT 'S' + RIGHT('000' + CAST(n.N AS varchar(10)), 3),
  c.Name + w.Word + CASE n.N % 4 WHEN 0 THEN N'金属制品' WHEN 1 THEN N'电子元件' WHEN 2 THEN N'标准件' ELSE N'塑胶' END + N'有限公司',
  c.Name, CASE n.N % 7 WHEN 0 THEN 'A' WHEN 1 THEN 'A' WHEN 6 THEN 'C' ELSE 'B' END,
  CASE n.N % 3 WHEN 0 THEN 30 WHEN 1 THEN 60 ELSE 90 END,
  c.AreaCode + '-6' + RIGHT('0000000' + CAST(n.N * 77317 % 10000000 AS varchar(10)), 7),
  CASE n.N % 10 WHEN 3 THEN N'仅供原厂替代件' WHEN 8 THEN N'来料需全检' ELSE NULL END
FROM Demo_Number n, Demo_City c, Demo_CompanyWord w
WHERE n.N <= 120 AND c.ID = (n.N + 7) % 23 AND w.ID = (n.N * 3 + 5) % 41
ORDER BY n.N
GO
INSERT INTO UserTb_Purchase (BillNo, SupplierID, BuyerID, BillDate, NeedDate, Amount, Status, Remark)
SELECT 'PO' + RIGHT('00000' + CAST(n.N AS varchar(10)), 5), n.N * 17 % 120 + 1, n.N % 4 + 14,
  DATEADD(day, -(1095 - n.N * 1095 / 900), '2026-11-01'),
  DATEADD(day, -(1095 - n.N * 1095 / 900) + 10 + n.N % 20, '2026-11-01'), 0,
  CASE WHEN n.N > 880 THEN 1 WHEN n.N > 840 THEN 2 WHEN n.N % 37 = 0 THEN 5 ELSE 4 END,
  CASE n.N % 12 WHEN 5 THEN N'分两批到货' WHEN 9 THEN N'随货附材质证明' ELSE NULL END
FROM Demo_Number n WHERE n.N <= 900
ORDER BY n.N
GO
INSERT INTO UserTb_BuyLine (PurchaseID, ProductID, Qty, Price, Amount, ArrivedQty)
SELECT b.Zembra_ID, p.Zembra_ID, (b.Zembra_ID * 7 + n.N * 3) % 20 * 10 + 10, p.Cost,
  ROUND(p.Cost * ((b.Zembra_ID * 7 + n.N * 3) % 20 * 10 + 10), 2),
  CASE b.Status WHEN 4 THEN (b.Zembra_ID * 7 + n.N * 3) % 20 * 10 + 10 WHEN 2 THEN ((b.Zembra_ID * 7 + n.N * 3) % 20 * 10 + 10) / 2 ELSE 0 END
FROM UserTb_Purchase b, Demo_Number n, UserTb_Product p
WHERE n.N <= b.Zembra_ID % 3 + 1 AND p.Zembra_ID = (b.Zembra_ID * 31 + n.N * 47) % 240 + 1
ORDER BY b.Zembra_ID, n.N
GO
UPDATE UserTb_Purchase
SET Amount = (SELECT SUM(d.Amount) FROM UserTb_BuyLine d WHERE d.PurchaseID = UserTb_Purchase.Zembra_ID)
GO
INSERT INTO UserTb_Rating (SupplierID, Period, Quality, Service, PriceScore)
SELECT s.Zembra_ID, CASE n.N WHEN 1 THEN '2026H1' ELSE '2025H2' END,
  CASE s.Grade WHEN 'A' THEN 90 WHEN 'B' THEN 80 ELSE 66 END + (s.Zembra_ID + n.N) % 9,
  CASE s.Grade WHEN 'A' THEN 88 ELSE 74 END + s.Zembra_ID * 3 % 11,
  60 + (s.Zembra_ID * 7 + n.N * 5) % 40
FROM UserTb_Supplier s, Demo_Number n WHERE n.N <= 2
ORDER BY s.Zembra_ID, n.N
GO

UPDATE UserTb_Supplier SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 120, '2023-11-02')), OwnerID = Zembra_ID % 20 + 3
GO
UPDATE UserTb_Purchase SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, BillDate), OwnerID = BuyerID
GO
UPDATE UserTb_BuyLine SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 1800, '2023-11-02'))
GO
UPDATE UserTb_Rating SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 240, '2023-11-02'))
GO
