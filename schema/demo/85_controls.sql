-- Control schemes: drop-downs, a cascade, lists and a template, in the form in which the wizards save them.

SET IDENTITY_INSERT Zembra_Query_Field ON
GO
INSERT INTO Zembra_Query_Field (
  QF_ID, QF_Name, QF_Desc, QF_NameID, QF_FieldType, QF_System,
  QF_Field, QF_CField, QF_Table, QF_CTable, QF_Relation, Zembra_CreateDate, Zembra_ModiDate
) VALUES
  (1, N'客户下拉框', N'选择客户，显示名称。', 1, 1, 0,
    ',', N'编号,名称', '[UserTb_Customer]', N'客户',
    'select [UserTb_Customer].[Zembra_ID],[UserTb_Customer].[Name] from [UserTb_Customer] where [UserTb_Customer].Zembra_Flag<> 0|||-1',
    '2026-05-06 10:20:00', '2026-05-06 10:20:00'),
  (2, N'终端客户下拉框', N'只列终端客户，绑定到订单的收货客户。', 4, 1, 0,
    ',', N'编号,名称', '[UserTb_Customer]', N'客户',
    N'select [UserTb_Customer].[Zembra_ID],[UserTb_Customer].[Name] from [UserTb_Customer] where [UserTb_Customer].Zembra_Flag<> 0 and ([UserTb_Customer].[Kind] = ''终端客户'' )|||5303',
    '2026-05-08 15:02:00', '2026-05-08 15:02:00'),
  (3, N'项目与任务', N'先选项目，再选该项目的任务。', 31, 2, 0,
    '[Zembra_ID],[Name]', N'编号,项目名称', '[UserTb_Project]', N'项目',
    'select [UserTb_Project].[Zembra_ID],[UserTb_Project].[Name] from [UserTb_Project] where [UserTb_Project].Zembra_Flag <> 0|||[UserTb_Task],[UserTb_Task].[ProjectID],[UserTb_Task].[Zembra_ID],[UserTb_Task].[Name],Zembra_Flag <> 0',
    '2026-06-11 09:41:00', '2026-06-11 09:41:00'),
  (4, N'客户列表', N'表单中选择客户的列表。', 1, 3, 0,
    '', '', '', '',
    N'select [UserTb_Customer].[Zembra_ID],[UserTb_Customer].[Name] as [客户.名称],[UserTb_Customer].[City] as [客户.城市],[UserTb_Region].[Name] as [销售区域.区域名称] from [UserTb_Region],[UserTb_Customer] where [UserTb_Customer].[RegionID]=[UserTb_Region].[Zembra_ID] and [UserTb_Region].[Zembra_Flag]=1 and [UserTb_Customer].[Zembra_Flag]=1|||名称|城市|区域',
    '2026-06-20 11:15:00', '2026-06-20 11:15:00'),
  (5, N'区域客户数列表', N'统计方案没有主键列，用常数代替。', 17, 3, 0,
    '', '', '', '',
    N'select 1 as tempidcolumn_V1,([UserTb_Region].[Name]) as [销售区域.区域名称],COUNT([UserTb_Customer].[Code]) as [客户.客户代码] from [UserTb_Customer],UserTb_Region where [UserTb_Customer].[Zembra_Flag]=1 and  [UserTb_Customer].[RegionID]=[UserTb_Region].[Zembra_ID] group by [UserTb_Region].[Name]|||区域|客户数',
    '2026-07-03 14:30:00', '2026-07-03 14:30:00'),
  (6, N'联系人下拉框模板', N'系统方案上的模板，供绑定。', 2, 1, 1,
    ',', '', '[UserTb_Contact]', '',
    'select [UserTb_Contact].[Zembra_ID],[UserTb_Contact].[Name] from [UserTb_Contact] where [UserTb_Contact].Zembra_Flag<> 0',
    '2026-07-15 16:05:00', '2026-07-15 16:05:00'),
  (7, N'产品下拉框模板', N'可绑定到主表与产品有关联的用户方案。', 7, 1, 1,
    ',', '', '[UserTb_Product]', '',
    'select [UserTb_Product].[Zembra_ID],[UserTb_Product].[Name] from [UserTb_Product] where Zembra_Flag <> 0',
    '2026-08-04 09:30:00', '2026-08-04 09:30:00')
GO
SET IDENTITY_INSERT Zembra_Query_Field OFF
GO
