-- Customers: sales regions, companies, contacts and visits.

CREATE TABLE UserTb_Customer (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Code nvarchar(20),
  Name nvarchar(100),
  City nvarchar(30),
  Kind nvarchar(20),
  RegionID int,
  Credit decimal(18,2),
  Founded datetime,
  Phone nvarchar(30),
  SalesmanID int,
  Remark nvarchar(500),
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Website nvarchar(100),
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Customer_RegionID ON UserTb_Customer (RegionID)
GO
CREATE INDEX IX_Customer_SalesmanID ON UserTb_Customer (SalesmanID)
GO
CREATE TABLE UserTb_Contact (
  Zembra_ID int IDENTITY PRIMARY KEY,
  CustID int,
  Name nvarchar(30),
  Post nvarchar(30),
  Mobile nvarchar(20),
  IsMain int,
  Birthday datetime,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Contact_CustID ON UserTb_Contact (CustID)
GO
CREATE TABLE UserTb_Region (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Name nvarchar(30),
  Code nvarchar(10),
  Target decimal(18,2),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE TABLE UserTb_Visit (
  Zembra_ID int IDENTITY PRIMARY KEY,
  CustID int,
  EmployeeID int,
  VisitDate datetime,
  Way nvarchar(20),
  Summary nvarchar(500),
  NextDate datetime,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Visit_CustID ON UserTb_Visit (CustID)
GO
CREATE INDEX IX_Visit_EmployeeID ON UserTb_Visit (EmployeeID)
GO

INSERT INTO UserTb_Region (Name, Code, Target) VALUES
  (N'上海苏南', N'HD1', 36000000), (N'浙皖', N'HD2', 28000000), (N'华南', N'HN', 42000000),
  (N'京津冀', N'HB', 25000000), (N'山东', N'SD', 18000000), (N'华中', N'HZ', 16000000),
  (N'西南', N'XN', 12000000), (N'东北', N'DB', 8000000), (N'海外', N'OV', NULL)
GO
INSERT INTO UserTb_Customer (Code, Name, City, Kind, RegionID, Credit, Founded, Phone, SalesmanID, Remark)
SELECT 'C' + RIGHT('0000' + CAST(n.N AS varchar(10)), 4),
  c.Name + w.Word + t.Word + N'有限公司', c.Name, t.Kind, c.RegionID,
  (n.N * 7 % 40 + 1) * 25000, DATEADD(day, -(n.N * 97 % 9000 + 400), '2026-11-01'),
  c.AreaCode + '-8' + RIGHT('0000000' + CAST(n.N * 98731 % 10000000 AS varchar(10)), 7),
  n.N % 9 + 5,
  CASE n.N % 9 WHEN 0 THEN N'月结客户，每月25日对账' WHEN 4 THEN N'首次合作需预付三成'
    WHEN 7 THEN N'指定物流，送货前电话确认' ELSE NULL END
FROM Demo_Number n, Demo_City c, Demo_CompanyWord w, Demo_Trade t
WHERE n.N <= 400 AND c.ID = n.N % 23 AND w.ID = n.N % 41 AND t.ID = n.N % 17
ORDER BY n.N
GO
-- Names and remarks that a careless page or statement would break on.
UPDATE UserTb_Customer SET Name = N'上海O''Brien贸易有限公司', Remark = N'外资企业，合同须中英文对照'
WHERE Zembra_ID = 23
GO
UPDATE UserTb_Customer SET Name = N'深圳"启航"电子有限公司', Remark = '' WHERE Zembra_ID = 32
GO
UPDATE UserTb_Customer SET Remark = N'开票抬头写"<南方>事业部"；A&B 两厂分开结算' WHERE Zembra_ID = 78
GO
INSERT INTO UserTb_Contact (CustID, Name, Post, Mobile, IsMain, Birthday)
SELECT (n.N - 1) % 400 + 1, s.Word + g.Word,
  CASE n.N % 5 WHEN 0 THEN N'采购经理' WHEN 1 THEN N'采购员' WHEN 2 THEN N'技术主管' WHEN 3 THEN N'财务' ELSE N'总经理' END,
  '138' + RIGHT('00000000' + CAST(n.N * 98731 % 100000000 AS varchar(10)), 8),
  CASE WHEN n.N <= 400 THEN 1 ELSE 0 END,
  CASE WHEN n.N % 3 = 0 THEN NULL ELSE DATEADD(day, -(n.N * 131 % 12000 + 8000), '2026-11-01') END
FROM Demo_Number n, Demo_Surname s, Demo_GivenName g
WHERE n.N <= 720 AND s.ID = n.N % 41 AND g.ID = n.N % 60
ORDER BY n.N
GO
INSERT INTO UserTb_Visit (CustID, EmployeeID, VisitDate, Way, Summary, NextDate)
SELECT n.N * 29 % 400 + 1, n.N % 9 + 5, DATEADD(day, -(1095 - n.N * 1095 / 1200), '2026-11-01'),
  CASE n.N % 4 WHEN 0 THEN N'上门' WHEN 1 THEN N'电话' WHEN 2 THEN N'上门' ELSE N'线上会议' END,
  CASE n.N % 6 WHEN 0 THEN N'了解下季度用量，约定样品测试' WHEN 1 THEN N'催收到期货款，对方承诺月底前付清'
    WHEN 2 THEN N'新产线选型交流，需提供减速机图纸' WHEN 3 THEN N'处理交期投诉，已协调加急'
    WHEN 4 THEN N'年度框架续签谈判' ELSE NULL END,
  CASE WHEN n.N % 3 = 1 THEN NULL ELSE DATEADD(day, -(1095 - n.N * 1095 / 1200) + 30, '2026-11-01') END
FROM Demo_Number n WHERE n.N <= 1200
ORDER BY n.N
GO
UPDATE UserTb_Visit SET Zembra_Flag = 0 WHERE Zembra_ID % 150 = 0
GO

UPDATE UserTb_Customer SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 400, '2023-11-02')), OwnerID = SalesmanID
GO
UPDATE UserTb_Contact SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 720, '2023-11-02'))
GO
UPDATE UserTb_Region SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 9, '2023-11-02'))
GO
UPDATE UserTb_Visit SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, VisitDate)
GO
