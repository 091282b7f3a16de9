-- Products: categories, price lists and bills of material.

CREATE TABLE UserTb_Product (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Code nvarchar(20),
  Name nvarchar(60),
  CategoryID int,
  Unit nvarchar(10),
  ListPrice decimal(18,2),
  Cost decimal(18,2),
  SafeQty int,
  Status int,
  LaunchDate datetime,
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Product_CategoryID ON UserTb_Product (CategoryID)
GO
CREATE TABLE UserTb_Category (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Name nvarchar(30),
  Prefix nvarchar(10),
  Series int,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE TABLE UserTb_PriceList (
  Zembra_ID int IDENTITY PRIMARY KEY,
  ProductID int,
  Level nvarchar(20),
  Price decimal(18,2),
  StartDate datetime,
  EndDate datetime,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_PriceList_ProductID ON UserTb_PriceList (ProductID)
GO
CREATE TABLE UserTb_Bom (
  Zembra_ID int IDENTITY PRIMARY KEY,
  ParentID int,
  ChildID int,
  Qty decimal(18,2),
  LossRate decimal(18,2),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Bom_ParentID ON UserTb_Bom (ParentID)
GO
CREATE INDEX IX_Bom_ChildID ON UserTb_Bom (ChildID)
GO

INSERT INTO UserTb_Category (Name, Prefix, Series) VALUES
  (N'伺服电机', N'SM', 6), (N'减速机', N'GR', 5), (N'联轴器', N'CP', 3), (N'直线导轨', N'LG', 4),
  (N'传感器', N'SN', 8), (N'运动控制器', N'MC', 3), (N'电缆线束', N'CB', 4), (N'气动元件', N'PN', 5),
  (N'轴承', N'BR', 6), (N'紧固件', N'FS', 2), (N'机柜壳体', N'CA', 2), (N'包装辅料', N'PK', 1)
GO
INSERT INTO UserTb_Product (Code, Name, CategoryID, Unit, ListPrice, Cost, SafeQty, Status, LaunchDate)
SELECT k.Prefix + '-' + CAST(100 + n.N AS varchar(10)), k.Name + ' ' + k.Prefix + CAST(n.N / 12 * 25 + 50 AS varchar(10)),
  k.Zembra_ID,
  CASE k.Zembra_ID WHEN 7 THEN N'米' WHEN 10 THEN N'盒' WHEN 12 THEN N'箱' ELSE N'台' END,
  CASE WHEN k.Zembra_ID <= 3 THEN 800 + n.N * 79 % 4200 WHEN k.Zembra_ID <= 6 THEN 300 + n.N * 53 % 1800
    ELSE 12 + n.N * 7 % 160 END,
  0, n.N * 11 % 50 * 10 + 20, CASE WHEN n.N % 23 = 0 THEN 2 ELSE 1 END,
  DATEADD(day, -(n.N * 41 % 2900 + 60), '2026-11-01')
FROM Demo_Number n, UserTb_Category k
WHERE n.N <= 240 AND k.Zembra_ID = n.N % 12 + 1
ORDER BY n.N
GO
UPDATE UserTb_Product SET Cost = ROUND(ListPrice * (0.58 + Zembra_ID % 15 * 0.01), 2)
GO
INSERT INTO UserTb_PriceList (ProductID, Level, Price, StartDate, EndDate)
SELECT p.Zembra_ID, CASE n.N WHEN 1 THEN N'经销商' ELSE N'大客户' END,
  ROUND(p.ListPrice * (1 - n.N * 0.06), 2), CAST('2026-01-01' AS datetime),
  CASE WHEN p.Zembra_ID % 5 = 0 THEN NULL ELSE CAST('2026-12-31' AS datetime) END
FROM UserTb_Product p, Demo_Number n WHERE n.N <= 2
ORDER BY p.Zembra_ID, n.N
GO
-- Motors, gears and controllers are made of cables, fasteners and housings.
INSERT INTO UserTb_Bom (ParentID, ChildID, Qty, LossRate)
SELECT p.Zembra_ID, c.Zembra_ID, n.N * 2, 0.01 * n.N
FROM UserTb_Product p, Demo_Number n, UserTb_Product c
WHERE p.CategoryID IN (1, 2, 6) AND n.N <= 5 AND c.Zembra_ID = (p.Zembra_ID * 13 + n.N) % 20 * 12 + 5 + n.N
ORDER BY p.Zembra_ID, n.N
GO

UPDATE UserTb_Product SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, LaunchDate), OwnerID = Zembra_ID % 20 + 3
GO
UPDATE UserTb_Category SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 12, '2023-11-02'))
GO
UPDATE UserTb_PriceList SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, StartDate)
GO
UPDATE UserTb_Bom SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 300, '2023-11-02'))
GO
