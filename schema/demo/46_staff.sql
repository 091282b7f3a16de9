-- Staff: departments, employees, attendance and training.

CREATE TABLE UserTb_Department (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Name nvarchar(30),
  ManagerID int,
  Budget decimal(18,2),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Department_ManagerID ON UserTb_Department (ManagerID)
GO
CREATE TABLE UserTb_Employee (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Code nvarchar(20),
  Name nvarchar(30),
  DeptID int,
  Post nvarchar(30),
  HireDate datetime,
  Salary decimal(18,2),
  Mobile nvarchar(20),
  Education nvarchar(20),
  Status int,
  Creator int,
  CreateDate datetime,
  WorkPhone nvarchar(20),
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Employee_DeptID ON UserTb_Employee (DeptID)
GO
CREATE TABLE UserTb_Attendance (
  Zembra_ID int IDENTITY PRIMARY KEY,
  EmployeeID int,
  Period nvarchar(10),
  WorkDays int,
  LateTimes int,
  OverHours decimal(18,2),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Attendance_EmployeeID ON UserTb_Attendance (EmployeeID)
GO
CREATE TABLE UserTb_Training (
  Zembra_ID int IDENTITY PRIMARY KEY,
  EmployeeID int,
  Course nvarchar(60),
  TrainDate datetime,
  Hours decimal(18,2),
  Score int,
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Training_EmployeeID ON UserTb_Training (EmployeeID)
GO

INSERT INTO UserTb_Department (Name, ManagerID, Budget) VALUES
  (N'总经办', 2, 1200000), (N'销售一部', 5, 2600000), (N'销售二部', 9, 2400000), (N'采购部', 14, 800000),
  (N'仓储物流部', 18, 1500000), (N'财务部', 21, 600000), (N'人力资源部', 23, 700000), (N'信息部', 3, 900000),
  (N'生产部', 25, 5200000), (N'技术部', 26, 3100000)
GO
-- The users of the system come first, in their order; then the people without a login.
INSERT INTO UserTb_Employee (Code, Name, DeptID, Post, HireDate, Salary, Mobile, Education, Status)
SELECT 'E' + RIGHT('000' + CAST(u.User_ID AS varchar(10)), 3), u.User_Name, u.User_DeptID, q.Quarters_name,
  DATEADD(day, -(u.User_ID * 149 % 3000 + 300), '2026-11-01'), 20000 - u.User_ID * 400,
  '139' + RIGHT('00000000' + CAST(u.User_ID * 3571927 % 100000000 AS varchar(10)), 8), N'本科', 1
FROM Zembra_User u, Zembra_Quarters q WHERE u.user_position = q.Quarters_ID
ORDER BY u.User_ID
GO
INSERT INTO UserTb_Employee (Code, Name, DeptID, Post, HireDate, Salary, Mobile, Education, Status)
SELECT 'E' + RIGHT('000' + CAST(n.N AS varchar(10)), 3), s.Word + g.Word,
  CASE WHEN n.N % 4 = 2 THEN 10 ELSE 9 END,
  CASE WHEN n.N IN (25, 26) THEN N'经理' WHEN n.N % 4 = 2 THEN N'工程师' WHEN n.N % 4 = 0 THEN N'装配工' ELSE N'操作工' END,
  DATEADD(day, -(n.N * 149 % 3600 + 40), '2026-11-01'), 5200 + n.N * 97 % 6000,
  '137' + RIGHT('00000000' + CAST(n.N * 3571927 % 100000000 AS varchar(10)), 8),
  CASE n.N % 4 WHEN 2 THEN N'本科' WHEN 0 THEN N'高中' ELSE N'大专' END, CASE WHEN n.N IN (33, 58, 71) THEN 0 ELSE 1 END
FROM Demo_Number n, Demo_Surname s, Demo_GivenName g
WHERE n.N BETWEEN 25 AND 80 AND s.ID = n.N * 5 % 41 AND g.ID = n.N * 7 % 60
ORDER BY n.N
GO
INSERT INTO UserTb_Attendance (EmployeeID, Period, WorkDays, LateTimes, OverHours)
SELECT e.Zembra_ID, '2026-' + RIGHT('0' + CAST(n.N AS varchar(2)), 2), 18 + (e.Zembra_ID * 5 + n.N * 7) % 5,
  CASE WHEN (e.Zembra_ID * 3 + n.N) % 7 = 0 THEN e.Zembra_ID % 3 + 1 ELSE 0 END, (e.Zembra_ID * 11 + n.N * 3) % 40 * 0.5
FROM UserTb_Employee e, Demo_Number n WHERE n.N <= 10 AND e.Status = 1
ORDER BY n.N, e.Zembra_ID
GO
INSERT INTO UserTb_Training (EmployeeID, Course, TrainDate, Hours, Score)
SELECT n.N * 7 % 80 + 1,
  CASE n.N % 5 WHEN 0 THEN N'安全生产' WHEN 1 THEN N'质量体系内审' WHEN 2 THEN N'销售谈判技巧' WHEN 3 THEN N'表格与报表应用' ELSE N'新员工入职' END,
  DATEADD(day, -(n.N * 7 % 1000), '2026-11-01'), n.N % 4 * 2 + 1.5, CASE WHEN n.N % 9 = 0 THEN NULL ELSE 60 + n.N * 7 % 40 END
FROM Demo_Number n WHERE n.N <= 160
ORDER BY n.N
GO

UPDATE UserTb_Department SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 10, '2023-11-02'))
GO
UPDATE UserTb_Employee SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, HireDate)
GO
UPDATE UserTb_Attendance SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, DATEADD(day, Zembra_ID * 1090 / 770, '2023-11-02'))
GO
UPDATE UserTb_Training SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, TrainDate)
GO
