-- Policies, and the help of the wizard pages: one line, one item of the list.

INSERT INTO Zembra_Policy
  (Policy_Name, Policy_ParaA, Policy_ParaB, Policy_ParaC, Policy_ParaD, Policy_ParaE, Policy_ParaF)
VALUES
  (N'系统基本参数', N'江南明岳机电有限公司', 'service@mingyue.example', '8', '30', '0', NULL),
  (N'OEM信息', '1', NULL, NULL, N'江南明岳机电有限公司' + CHAR(13) + CHAR(10) + N'服务电话：0512-80001234,内部使用', NULL, NULL)
GO
SET IDENTITY_INSERT Zembra_Functions ON
GO
INSERT INTO Zembra_Functions (Func_ID, Func_MenuID, Func_Action) VALUES
  (1, 127, 'addSearchDlg'), (2, 127, 'modiSearchDlg'), (3, 128, 'addsearchdlg_UsrModel'),
  (4, 128, 'addsearchdlg_UsrField'), (5, 129, 'addsearchdlg_sysField'), (6, 127, 'ctrlSearch')
GO
SET IDENTITY_INSERT Zembra_Functions OFF
GO
INSERT INTO Zembra_SubHelp (SubHelp_FuncID, SubHelp_title, SubHelp_popup) VALUES
  (1, N'新建查询方案',
   N'先选主表，再勾选与主表相关的关系；选中的关系决定结果里能出现哪些表的字段。' + CHAR(13) + CHAR(10)
   + N'计算字段由已有字段、运算符和函数组成，例如金额减折扣。' + CHAR(13) + CHAR(10)
   + N'过滤条件之间用“与”“或”连接，最后一个条件不需要选择逻辑关系。' + CHAR(13) + CHAR(10)
   + N'有统计时，没有用统计函数的项目都应列入分组。' + CHAR(13) + CHAR(10)
   + N'保存前请先预览，语句不能运行的方案不会被保存。'),
  (2, N'修改查询方案',
   N'改动计算字段的先后次序，会改变过滤、统计和分组所指的字段。' + CHAR(13) + CHAR(10)
   + N'更换主表后，原来的关系和条件都需要重新选择。' + CHAR(13) + CHAR(10)
   + N'名称在所有未删除的方案中不能重复。'),
  (3, N'绑定模板',
   N'第一步选择用户查询方案，第二步选择与其主表有关联的模板，第三步为控件命名。' + CHAR(13) + CHAR(10)
   + N'模板的语句会原样复制，之后模板的改动不影响已绑定的控件。'),
  (4, N'新建用户控件方案',
   N'下拉框控件需要一个值字段和一个显示字段，两者应在同一张表。' + CHAR(13) + CHAR(10)
   + N'级联框控件按层次逐级选择，每一级都要指定关联字段。' + CHAR(13) + CHAR(10)
   + N'列表框控件可以选择多列，并为每一列写标题。'),
  (5, N'新建系统控件方案',
   N'系统控件方案是模板，只能建在系统查询方案上。' + CHAR(13) + CHAR(10)
   + N'表单不直接使用模板，要先绑定到用户查询方案。'),
  (6, N'查询方案管理',
   N'列表可以按目录、用户或系统方案筛选。' + CHAR(13) + CHAR(10)
   + N'删除方案时，建在它上面的控件方案一并删除。')
GO
