-- Workflows, their running instances, delegations, and the tasks of users.

CREATE TABLE Zembra_WorkFlow_Custom (
  Zembra_ID int IDENTITY PRIMARY KEY,
  WF_SameFlag int,
  WF_WorkName int
)
GO
CREATE INDEX IX_WorkFlow_Custom_Same ON Zembra_WorkFlow_Custom (WF_SameFlag)
GO

CREATE TABLE Zembra_WorkFlow_PerDot (
  Zembra_ID int IDENTITY PRIMARY KEY,
  WFPS_NoName nvarchar(100)
)
GO

CREATE TABLE Zembra_WorkFlowInstance_Main (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Zembra_Flag int DEFAULT 1,
  WFI_InstanceID int,
  WFI_WorkFlowID int,
  WFI_WorkFlowStepID int,
  WFI_Status int,
  WFI_NeedUser int,
  WFI_Action int,
  WFI_Keeping int DEFAULT 0
)
GO
CREATE INDEX IX_WorkFlowInstance_Main_Instance ON Zembra_WorkFlowInstance_Main (WFI_InstanceID)
GO
CREATE INDEX IX_WorkFlowInstance_Main_User ON Zembra_WorkFlowInstance_Main (WFI_NeedUser, WFI_Action)
GO

CREATE TABLE Zembra_WorkFlowInstance_Attribute (
  WFIA_InstanceID int,
  WFIA_Name nvarchar(200)
)
GO
CREATE INDEX IX_WorkFlowInstance_Attribute ON Zembra_WorkFlowInstance_Attribute (WFIA_InstanceID)
GO

CREATE TABLE Zembra_WorkFlowInstance_Handle (
  Zembra_ID int IDENTITY PRIMARY KEY,
  WFH_Name nvarchar(100)
)
GO

CREATE TABLE Zembra_WFInstance_ExchangePermission (
  EPWF_sID int,
  EPWF_rID int,
  EPWF_StartDate datetime,
  EPWF_EndDate datetime
)
GO
CREATE INDEX IX_WFInstance_ExchangePermission ON Zembra_WFInstance_ExchangePermission (EPWF_rID)
GO

CREATE TABLE Zembra_ExchangePermission (
  Exper_SID int,
  ExPer_RID int,
  ExPer_Para int
)
GO
CREATE INDEX IX_ExchangePermission ON Zembra_ExchangePermission (ExPer_RID, ExPer_Para)
GO

CREATE TABLE Zembra_MyTask_Record (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Zembra_Flag int DEFAULT 1,
  MT_UserID nvarchar(50),
  MT_Status int,
  MT_Topic nvarchar(200),
  MT_StartDate datetime,
  MT_PlanEndDate datetime
)
GO
