-- Stock: warehouses, quantities, movements and transfers.

CREATE TABLE UserTb_Warehouse (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Name nvarchar(30),
  City nvarchar(30),
  KeeperID int,
  Area decimal(18,2),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Warehouse_KeeperID ON UserTb_Warehouse (KeeperID)
GO
CREATE TABLE UserTb_Stock (
  Zembra_ID int IDENTITY PRIMARY KEY,
  WarehouseID int,
  ProductID int,
  Qty int,
  Locked int,
  CheckDate datetime,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Stock_WarehouseID ON UserTb_Stock (WarehouseID)
GO
CREATE INDEX IX_Stock_ProductID ON UserTb_Stock (ProductID)
GO
CREATE TABLE UserTb_Movement (
  Zembra_ID int IDENTITY PRIMARY KEY,
  WarehouseID int,
  ProductID int,
  Kind nvarchar(20),
  Qty int,
  MoveDate datetime,
  BillNo nvarchar(30),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Movement_WarehouseID ON UserTb_Movement (WarehouseID)
GO
CREATE INDEX IX_Movement_ProductID ON UserTb_Movement (ProductID)
GO
CREATE TABLE UserTb_Transfer (
  Zembra_ID int IDENTITY PRIMARY KEY,
  FromID int,
  ToID int,
  ProductID int,
  Qty int,
  MoveDate datetime,
  Status int,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Transfer_FromID ON UserTb_Transfer (FromID)
GO
CREATE INDEX IX_Transfer_ToID ON UserTb_Transfer (ToID)
GO
CREATE INDEX IX_Transfer_ProductID ON UserTb_Transfer (ProductID)
GO

INSERT INTO UserTb_Warehouse (Name, City, KeeperID, Area) VALUES
  (N'成品一库', N'苏州', 18, 3200.5), (N'成品二库', N'苏州', 19, 1800), (N'原材料库', N'苏州', 20, 2600),
  (N'华南分仓', N'东莞', 19, 1500), (N'北方分仓', N'天津', 20, 1200), (N'退货待检库', N'苏州', 18, 260.75)
GO
INSERT INTO UserTb_Stock (WarehouseID, ProductID, Qty, Locked, CheckDate)
SELECT w.Zembra_ID, p.Zembra_ID, (p.Zembra_ID * 37 + w.Zembra_ID * 101) % 600,
  (p.Zembra_ID * 37 + w.Zembra_ID * 101) % 600 / 7,
  CASE WHEN (p.Zembra_ID + w.Zembra_ID) % 11 = 0 THEN NULL ELSE DATEADD(day, -((p.Zembra_ID + w.Zembra_ID) % 90), '2026-11-01') END
FROM UserTb_Warehouse w, UserTb_Product p
WHERE (p.Zembra_ID + w.Zembra_ID) % 3 <> 0
ORDER BY w.Zembra_ID, p.Zembra_ID
GO
INSERT INTO UserTb_Movement (WarehouseID, ProductID, Kind, Qty, MoveDate, BillNo)
SELECT n.N % 5 + 1, n.N * 43 % 240 + 1,
  CASE n.N % 5 WHEN 0 THEN N'采购入库' WHEN 1 THEN N'销售出库' WHEN 2 THEN N'生产领料' WHEN 3 THEN N'完工入库' ELSE N'销售出库' END,
  CASE n.N % 5 WHEN 0 THEN 1 WHEN 3 THEN 1 ELSE -1 END * (n.N * 13 % 60 + 1),
  DATEADD(day, -(1095 - n.N * 1095 / 2500), '2026-11-01'),
  CASE n.N % 5 WHEN 0 THEN 'PO' + RIGHT('00000' + CAST(n.N % 900 + 1 AS varchar(10)), 5)
    WHEN 1 THEN 'SO' + RIGHT('00000' + CAST(n.N % 2000 + 1 AS varchar(10)), 5) ELSE NULL END
FROM Demo_Number n WHERE n.N <= 2500
ORDER BY n.N
GO
INSERT INTO UserTb_Transfer (FromID, ToID, ProductID, Qty, MoveDate, Status)
SELECT n.N % 3 + 1, n.N % 2 + 4, n.N * 19 % 240 + 1, n.N * 7 % 50 + 5,
  DATEADD(day, -(730 - n.N * 730 / 200), '2026-11-01'), CASE WHEN n.N > 190 THEN 1 ELSE 2 END
FROM Demo_Number n WHERE n.N <= 200
ORDER BY n.N
GO

UPDATE UserTb_Warehouse SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 6, '2023-11-02'))
GO
UPDATE UserTb_Stock SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 960, '2023-11-02'))
GO
UPDATE UserTb_Movement SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, MoveDate)
GO
UPDATE UserTb_Transfer SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, MoveDate)
GO
