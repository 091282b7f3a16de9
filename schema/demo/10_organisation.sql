-- The people of the demo company, what they may do, and the menu.

INSERT INTO Zembra_Rank (Rank_name, Rank_Index) VALUES
  (N'普通员工', 1), (N'主管', 2), (N'部门经理', 3), (N'公司领导', 4)
GO
INSERT INTO Zembra_Quarters (Quarters_name) VALUES
  (N'总经理'), (N'部门经理'), (N'业务员'), (N'采购员'), (N'仓管员'), (N'会计'), (N'出纳'),
  (N'人事专员'), (N'系统管理员'), (N'软件工程师')
GO
-- Departments are groups of type 0; 11 and up are roles.
INSERT INTO Zembra_Group (Group_name, Group_Type) VALUES
  (N'总经办', 0), (N'销售一部', 0), (N'销售二部', 0), (N'采购部', 0), (N'仓储物流部', 0),
  (N'财务部', 0), (N'人力资源部', 0), (N'信息部', 0), (N'生产部', 0), (N'技术部', 0),
  (N'系统管理员', 1), (N'方案设计员', 1), (N'销售主管', 1), (N'财务查询', 1), (N'全体员工', 1)
GO
INSERT INTO Zembra_User
  (User_Name, User_user, User_GroupID, User_joinGroupID, User_RankID, user_position, User_DeptID)
VALUES
  (N'系统管理员', 'admin', 8, '11,12,15,', 4, 9, 8),
  (N'沈维岳', 'shenwy', 1, '13,14,15,', 4, 1, 1),
  (N'顾清源', 'guqy', 8, '11,12,15,', 3, 2, 8),
  (N'杜小满', 'duxm', 8, '12,15,', 1, 10, 8),
  (N'陆建平', 'lujp', 2, '12,13,15,', 3, 2, 2),
  (N'方怡然', 'fangyr', 2, '15,', 1, 3, 2),
  (N'邵东升', 'shaods', 2, '15,', 1, 3, 2),
  (N'乔安', 'qiaoa', 2, '15,', 1, 3, 2),
  (N'卢雅琴', 'luyq', 3, '12,13,15,', 3, 2, 3),
  (N'石磊', 'shil', 3, '15,', 2, 3, 3),
  (N'温佳宁', 'wenjn', 3, '15,', 1, 3, 3),
  (N'康志远', 'kangzy', 3, '15,', 1, 3, 3),
  (N'欧阳雪', 'ouyangx', 3, '15,', 1, 3, 3),
  (N'金永福', 'jinyf', 4, '15,', 3, 2, 4),
  (N'贺晓棠', 'hext', 4, '15,', 1, 4, 4),
  (N'白景文', 'baijw', 4, '15,', 1, 4, 4),
  (N'柳青青', 'liuqq', 4, '15,', 1, 4, 4),
  (N'段宏斌', 'duanhb', 5, '15,', 3, 2, 5),
  (N'龙四海', 'longsh', 5, '15,', 1, 5, 5),
  (N'万春生', 'wancs', 5, '15,', 1, 5, 5),
  (N'严素云', 'yansy', 6, '14,15,', 3, 2, 6),
  (N'钱多多', 'qiandd', 6, '14,15,', 1, 6, 6),
  (N'夏静姝', 'xiajs', 7, '15,', 3, 2, 7),
  (N'常乐', 'changl', 7, ',', 1, 8, 7)
GO
INSERT INTO Zembra_ICON (icon_name, icon_file) VALUES
  (N'文件夹', 'folder.gif'), (N'查询', 'query.gif'), (N'控件', 'control.gif'), (N'任务', 'task.gif'),
  (N'流程', 'flow.gif'), (N'帮助', 'help.gif')
GO

-- 204 is the fixed parent of the workflow modules; 127 is the module of log rows without a module.
SET IDENTITY_INSERT Zembra_Menu ON
GO
INSERT INTO Zembra_Menu
  (Menu_ID, Menu_Name, Menu_Href, Menu_ParentID, Menu_AddType, Menu_AddValue, Menu_Desc, Menu_Order)
VALUES
  (1, N'我的工作台', NULL, 0, 0, NULL, N'个人待办', 1),
  (2, N'我的任务', '/TarloMyScheme.Zembra?action=MyTaskList', 1, 0, NULL, N'分配给我的任务', 1),
  (3, N'业务流程一览', '/orvane.Zembra?action=showAllWorkFlowInstance', 1, 0, NULL, N'我参与的流程', 2),
  (100, N'系统设计', NULL, 0, 0, NULL, N'设计员使用的工具', 2),
  (120, N'查询设计', NULL, 100, 0, NULL, N'查询方案与控件方案', 1),
  (127, N'查询方案管理', '/TarloQuery.Zembra?action=ctrlSearch', 120, 0, NULL, N'新建、修改和预览查询方案', 1),
  (128, N'用户控件方案', '/TarloQuery.Zembra?action=ctrlSearch_Usrfield', 120, 0, NULL, N'把查询方案绑定到表单控件', 2),
  (129, N'系统控件方案', '/TarloQuery.Zembra?action=ctrlSearch_Sysfield', 120, 0, NULL, N'控件方案的模板', 3),
  (200, N'流程中心', NULL, 0, 0, NULL, N'审批流程', 3),
  (204, N'流程模块', NULL, 200, 0, NULL, N'按流程发起', 1),
  (210, N'销售合同审批', 'TarloWFInstance.Zembra?action=doTransactWindowWFI&intMenuID=210', 204, 1, 1, N'十万元以上合同', 1),
  (211, N'费用报销审批', 'TarloWFInstance.Zembra?action=doTransactWindowWFI&intMenuID=211', 204, 1, 2, N'部门经理与财务两级', 2)
GO
SET IDENTITY_INSERT Zembra_Menu OFF
GO
-- Everyone has the workbench and the workflows.
INSERT INTO Zembra_Permission (Permission_UserID, Permission_MenuID, Permission_SubAction)
SELECT u.User_ID, m.Menu_ID, 'browse,' FROM Zembra_User u, Zembra_Menu m
WHERE m.Menu_ID < 100 OR m.Menu_ID >= 200
GO
-- Designers may change schemes; the heads of purchasing, finance and staff may look at them.
INSERT INTO Zembra_Permission (Permission_UserID, Permission_MenuID, Permission_SubAction)
SELECT u.User_ID, m.Menu_ID, 'browse,add,modify,delete,preview,' FROM Zembra_User u, Zembra_Menu m
WHERE CHARINDEX('12,', u.User_joinGroupID) > 0 AND m.Menu_ID BETWEEN 100 AND 199
GO
INSERT INTO Zembra_Permission (Permission_UserID, Permission_MenuID, Permission_SubAction)
SELECT u.User_ID, m.Menu_ID, 'browse,preview,' FROM Zembra_User u, Zembra_Menu m
WHERE u.User_ID IN (2, 14, 21, 23) AND m.Menu_ID IN (100, 120, 127)
GO
UPDATE Zembra_Permission SET permission_forbid = 1
WHERE Permission_UserID = 24 AND Permission_MenuID = 211
GO
