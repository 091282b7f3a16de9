-- Finance: invoices, receipts, payments and expenses.

CREATE TABLE UserTb_Invoice (
  Zembra_ID int IDENTITY PRIMARY KEY,
  InvoiceNo nvarchar(30),
  OrderID int,
  CustID int,
  InvoiceDate datetime,
  DueDate datetime,
  Amount decimal(18,2),
  Tax decimal(18,2),
  Received decimal(18,2),
  Creator int,
  CreateDate datetime,
  OwnerID int,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Invoice_OrderID ON UserTb_Invoice (OrderID)
GO
CREATE INDEX IX_Invoice_CustID ON UserTb_Invoice (CustID)
GO
CREATE TABLE UserTb_Receipt (
  Zembra_ID int IDENTITY PRIMARY KEY,
  BillNo nvarchar(30),
  InvoiceID int,
  CustID int,
  ReceiveDate datetime,
  Amount decimal(18,2),
  Way nvarchar(20),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Receipt_InvoiceID ON UserTb_Receipt (InvoiceID)
GO
CREATE INDEX IX_Receipt_CustID ON UserTb_Receipt (CustID)
GO
CREATE TABLE UserTb_Payment (
  Zembra_ID int IDENTITY PRIMARY KEY,
  BillNo nvarchar(30),
  PurchaseID int,
  SupplierID int,
  PayDate datetime,
  Amount decimal(18,2),
  Way nvarchar(20),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Payment_PurchaseID ON UserTb_Payment (PurchaseID)
GO
CREATE INDEX IX_Payment_SupplierID ON UserTb_Payment (SupplierID)
GO
CREATE TABLE UserTb_Expense (
  Zembra_ID int IDENTITY PRIMARY KEY,
  EmployeeID int,
  DeptID int,
  ProjectID int,
  Kind nvarchar(20),
  ExpenseDate datetime,
  Amount decimal(18,2),
  Approved int,
  Remark nvarchar(200),
  Creator int,
  CreateDate datetime,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Expense_EmployeeID ON UserTb_Expense (EmployeeID)
GO
CREATE INDEX IX_Expense_DeptID ON UserTb_Expense (DeptID)
GO
CREATE INDEX IX_Expense_ProjectID ON UserTb_Expense (ProjectID)
GO

INSERT INTO UserTb_Invoice (InvoiceNo, OrderID, CustID, InvoiceDate, DueDate, Amount, Tax, Received)
SELECT '3200' + RIGHT('00000000' + CAST(o.Zembra_ID * 131 + 20000 AS varchar(10)), 8), o.Zembra_ID, o.BillToID,
  DATEADD(day, 3, o.DueDate), DATEADD(day, 63, o.DueDate), o.Amount - o.Discount,
  ROUND((o.Amount - o.Discount) * 13 / 113, 2),
  CASE WHEN o.Zembra_ID > 1650 THEN 0 WHEN o.Zembra_ID % 9 = 0 THEN ROUND((o.Amount - o.Discount) * 0.5, 2)
    ELSE o.Amount - o.Discount END
FROM UserTb_Order o WHERE o.Status = 4 AND o.Zembra_ID % 5 <> 1
ORDER BY o.Zembra_ID
GO
INSERT INTO UserTb_Receipt (BillNo, InvoiceID, CustID, ReceiveDate, Amount, Way)
SELECT 'SK' + RIGHT('00000' + CAST(i.Zembra_ID AS varchar(10)), 5), i.Zembra_ID, i.CustID,
  DATEADD(day, i.Zembra_ID % 50 - 10, i.DueDate), i.Received,
  CASE i.Zembra_ID % 4 WHEN 0 THEN N'银行承兑' WHEN 1 THEN N'现金' ELSE N'电汇' END
FROM UserTb_Invoice i WHERE i.Received > 0
ORDER BY i.Zembra_ID
GO
INSERT INTO UserTb_Payment (BillNo, PurchaseID, SupplierID, PayDate, Amount, Way)
SELECT 'FK' + RIGHT('00000' + CAST(b.Zembra_ID AS varchar(10)), 5), b.Zembra_ID, b.SupplierID,
  DATEADD(day, s.PayDays, b.NeedDate), b.Amount, CASE b.Zembra_ID % 3 WHEN 0 THEN N'银行承兑' ELSE N'电汇' END
FROM UserTb_Purchase b, UserTb_Supplier s
WHERE b.Status = 4 AND b.SupplierID = s.Zembra_ID AND DATEADD(day, s.PayDays, b.NeedDate) < '2026-11-01'
ORDER BY b.Zembra_ID
GO
INSERT INTO UserTb_Expense (EmployeeID, DeptID, ProjectID, Kind, ExpenseDate, Amount, Approved, Remark)
SELECT e.Zembra_ID, e.DeptID, CASE WHEN n.N % 3 = 0 THEN n.N % 40 + 1 ELSE NULL END,
  CASE n.N % 5 WHEN 0 THEN N'差旅费' WHEN 1 THEN N'业务招待' WHEN 2 THEN N'交通费' WHEN 3 THEN N'办公用品' ELSE N'差旅费' END,
  DATEADD(day, -(1095 - n.N * 1095 / 600), '2026-11-01'), n.N * 37 % 2800 + 36.5, CASE WHEN n.N > 560 THEN 0 ELSE 1 END,
  CASE n.N % 5 WHEN 0 THEN N'赴客户现场调试三天' WHEN 2 THEN N'市内拜访客户' ELSE NULL END
FROM Demo_Number n, UserTb_Employee e
WHERE n.N <= 600 AND e.Zembra_ID = n.N * 11 % 80 + 1
ORDER BY n.N
GO

UPDATE UserTb_Invoice SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, InvoiceDate), OwnerID = Zembra_ID % 20 + 3
GO
UPDATE UserTb_Receipt SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, ReceiveDate)
GO
UPDATE UserTb_Payment SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, PayDate)
GO
UPDATE UserTb_Expense SET Creator = Zembra_ID % 23 + 2, CreateDate = DATEADD(hour, 8 + Zembra_ID % 10, ExpenseDate)
GO
