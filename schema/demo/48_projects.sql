-- Projects with their tasks and milestones.

CREATE TABLE UserTb_Project (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Name nvarchar(100),
  CustID int,
  ManagerID int,
  StartDate datetime,
  PlanEnd datetime,
  Budget decimal(18,2),
  Spent decimal(18,2),
  Progress int,
  Remark nvarchar(500),
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Project_CustID ON UserTb_Project (CustID)
GO
CREATE INDEX IX_Project_ManagerID ON UserTb_Project (ManagerID)
GO
CREATE TABLE UserTb_Task (
  Zembra_ID int IDENTITY PRIMARY KEY,
  ProjectID int,
  Name nvarchar(60),
  EmployeeID int,
  PlanHours decimal(18,2),
  RealHours decimal(18,2),
  Status int,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Task_ProjectID ON UserTb_Task (ProjectID)
GO
CREATE INDEX IX_Task_EmployeeID ON UserTb_Task (EmployeeID)
GO
CREATE TABLE UserTb_Milestone (
  Zembra_ID int IDENTITY PRIMARY KEY,
  ProjectID int,
  Name nvarchar(60),
  PlanDate datetime,
  DoneDate datetime,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Milestone_ProjectID ON UserTb_Milestone (ProjectID)
GO

INSERT INTO UserTb_Project (Name, CustID, ManagerID, StartDate, PlanEnd, Budget, Spent, Progress, Remark)
SELECT c.City + w.Word + CASE n.N % 4 WHEN 0 THEN N'装配线改造' WHEN 1 THEN N'自动仓储' WHEN 2 THEN N'机器人上下料' ELSE N'检测工位' END + N'项目',
  c.Zembra_ID, n.N % 6 + 26, DATEADD(day, -(1000 - n.N * 24), '2026-11-01'), DATEADD(day, -(1000 - n.N * 24) + 150 + n.N % 5 * 30, '2026-11-01'),
  (n.N * 37 % 90 + 10) * 10000, (n.N * 37 % 90 + 10) * (n.N % 12 + 1) * 900, CASE WHEN n.N < 30 THEN 100 ELSE (41 - n.N) * 9 END,
  CASE n.N % 6 WHEN 1 THEN N'客户现场停产窗口只有春节' WHEN 4 THEN N'二期待立项' ELSE NULL END
FROM Demo_Number n, UserTb_Customer c, Demo_CompanyWord w
WHERE n.N <= 40 AND c.Zembra_ID = n.N * 61 % 400 + 1 AND w.ID = c.Zembra_ID % 41
ORDER BY n.N
GO
INSERT INTO UserTb_Task (ProjectID, Name, EmployeeID, PlanHours, RealHours, Status)
SELECT p.Zembra_ID,
  CASE n.N WHEN 1 THEN N'现场勘测' WHEN 2 THEN N'方案设计' WHEN 3 THEN N'机械图纸' WHEN 4 THEN N'电气图纸'
    WHEN 5 THEN N'采购跟催' WHEN 6 THEN N'厂内装配' WHEN 7 THEN N'现场安装' ELSE N'调试验收' END,
  (p.Zembra_ID * 3 + n.N * 5) % 54 + 27, n.N * 16 + p.Zembra_ID % 5 * 8,
  CASE WHEN p.Progress = 100 OR n.N * 12 <= p.Progress THEN n.N * 16 + (p.Zembra_ID * 7 + n.N * 3) % 30 ELSE NULL END,
  CASE WHEN p.Progress = 100 OR n.N * 12 <= p.Progress THEN 2 ELSE 1 END
FROM UserTb_Project p, Demo_Number n WHERE n.N <= 8
ORDER BY p.Zembra_ID, n.N
GO
INSERT INTO UserTb_Milestone (ProjectID, Name, PlanDate, DoneDate)
SELECT p.Zembra_ID, CASE n.N WHEN 1 THEN N'启动会' WHEN 2 THEN N'设计评审' WHEN 3 THEN N'出厂验收' ELSE N'终验' END,
  DATEADD(day, n.N * 40 - 35, p.StartDate),
  CASE WHEN p.Progress = 100 OR n.N * 25 <= p.Progress THEN DATEADD(day, n.N * 40 - 35 + (p.Zembra_ID + n.N) % 9 - 2, p.StartDate) ELSE NULL END
FROM UserTb_Project p, Demo_Number n WHERE n.N <= 4
ORDER BY p.Zembra_ID, n.N
GO

UPDATE UserTb_Project SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, StartDate), OwnerID = Zembra_ID % 20 + 3
GO
UPDATE UserTb_Task SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 320, '2023-11-02'))
GO
UPDATE UserTb_Milestone SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 160, '2023-11-02'))
GO
