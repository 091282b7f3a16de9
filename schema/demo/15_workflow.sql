-- Two approval workflows with running instances, delegations, and the tasks of users.

-- The contract workflow was revised: its newest row counts.
INSERT INTO Zembra_WorkFlow_Custom (WF_SameFlag, WF_WorkName) VALUES (1, 1), (1, 1), (2, 2)
GO
-- A step without a name shows the state of its instance instead.
INSERT INTO Zembra_WorkFlow_PerDot (WFPS_NoName) VALUES
  (N'部门经理审核'), (N'财务复核'), (N'总经理批准'), ('')
GO
INSERT INTO Zembra_WorkFlowInstance_Handle (WFH_Name) VALUES (N'处理'), (N'补充资料'), (N'归档')
GO
-- WFI_Action 2 waits for WFI_NeedUser; flags 0 and 2 to 5 are shown nowhere.
INSERT INTO Zembra_WorkFlowInstance_Main
  (Zembra_Flag, WFI_InstanceID, WFI_WorkFlowID, WFI_WorkFlowStepID, WFI_Status, WFI_NeedUser, WFI_Action, WFI_Keeping)
VALUES
  (1, 101, 2, 1, 1, 5, 2, 0), (1, 102, 2, 2, 1, 21, 2, 0), (1, 103, 2, 3, 1, 2, 2, 0),
  (1, 104, 2, 4, 2, 5, 2, 0), (1, 105, 3, 1, 1, 9, 2, 0), (1, 106, 3, 2, 1, 21, 2, 0),
  (1, 107, 3, 1, 1, 5, 2, 1), (2, 108, 1, 3, 3, 2, 2, 0), (1, 109, 2, 1, 1, 9, 2, 0),
  (1, 110, 2, 3, 1, 2, 1, 0), (0, 111, 3, 2, 1, 21, 2, 0), (1, 112, 3, 1, 1, 5, 2, 0)
GO
INSERT INTO Zembra_WorkFlowInstance_Attribute (WFIA_InstanceID, WFIA_Name) VALUES
  (101, N'苏州框架采购合同'), (102, N'产线改造'), (103, N'深圳设备供货合同'), (104, N'备件合同补充协议'),
  (105, N'十月差旅报销'), (106, N'展会费用'), (107, N'招待费'), (108, N'旧版合同'),
  (109, N'温州经销协议'), (110, N'成都检测工位合同'), (111, N'作废报销单'), (112, N'九月交通费报销')
GO
INSERT INTO Zembra_WFInstance_ExchangePermission (EPWF_sID, EPWF_rID, EPWF_StartDate, EPWF_EndDate) VALUES
  (2, 3, '2026-10-01', '2027-12-31'), (5, 6, '2025-02-01', '2025-02-20')
GO
INSERT INTO Zembra_ExchangePermission (Exper_SID, ExPer_RID, ExPer_Para) VALUES (2, 3, 210), (5, 6, 211)
GO

INSERT INTO Zembra_MyTask_Record (MT_UserID, MT_Status, MT_Topic, MT_StartDate, MT_PlanEndDate) VALUES
  ('5', 1, N'跟进华南大客户续签', '2026-10-08', '2026-10-30'),
  ('5', 1, N'年度销售预测', '2026-10-20', '2027-06-30'),
  ('5', 1, N'催收逾期货款', '2026-10-25', '2026-11-15'),
  ('5', 2, N'三季度业绩分析', '2026-09-20', '2026-10-12'),
  ('9', 1, N'经销商大会方案', '2026-10-10', '2027-03-31'),
  ('9', 1, N'新品报价单核对', '2026-10-18', '2026-11-02'),
  ('14', 1, N'供应商年度评审', '2026-10-15', '2027-01-15'),
  ('14', 1, N'轴承降价谈判', '2026-10-01', '2026-10-31'),
  ('18', 1, N'北方分仓盘点', '2026-10-26', '2026-11-06'),
  ('21', 1, N'十月结账', '2026-10-28', '2026-11-08'),
  ('21', 1, N'应收账龄报表改版', '2026-10-12', '2027-02-28'),
  ('23', 1, N'年底绩效考核准备', '2026-10-20', '2026-12-20'),
  ('3', 1, N'数据字典整理', '2026-09-01', '2026-12-31'),
  ('3', 1, N'查询方案权限梳理', '2026-10-05', '2026-10-20'),
  ('4', 1, N'库存报表上线', '2026-10-15', '2027-05-31')
GO
UPDATE Zembra_MyTask_Record SET Zembra_Flag = 0 WHERE Zembra_ID = 8
GO
