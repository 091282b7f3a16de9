-- The operation log, the statements of drawn grids, policies and help texts.

CREATE TABLE Zembra_OperateLog (
  OperateLog_ID int IDENTITY PRIMARY KEY,
  OperateLog_UID int,
  OperateLog_ModulID int,
  OperateLog_SQL nvarchar(max)
)
GO
CREATE INDEX IX_OperateLog_User ON Zembra_OperateLog (OperateLog_UID)
GO

CREATE TABLE Zembra_Temp_TarloTable (
  TarloTable_ID int IDENTITY PRIMARY KEY,
  TarloTable_SessionID nvarchar(50),
  TarloTable_SQLString nvarchar(max),
  TarloTable_SQLString2 nvarchar(max)
)
GO

CREATE TABLE Zembra_Policy (
  Policy_Name nvarchar(100),
  Policy_ParaA nvarchar(max),
  Policy_ParaB nvarchar(max),
  Policy_ParaC nvarchar(max),
  Policy_ParaD nvarchar(max),
  Policy_ParaE nvarchar(max),
  Policy_ParaF nvarchar(max)
)
GO

CREATE TABLE Zembra_SubHelp (
  SubHelp_ID int IDENTITY PRIMARY KEY,
  SubHelp_FuncID int,
  SubHelp_title nvarchar(200),
  SubHelp_popup nvarchar(max)
)
GO
CREATE INDEX IX_SubHelp_Function ON Zembra_SubHelp (SubHelp_FuncID)
GO

CREATE TABLE Zembra_Functions (
  Func_ID int IDENTITY PRIMARY KEY,
  Func_MenuID int,
  Func_Action nvarchar(100)
)
GO
CREATE INDEX IX_Functions_Menu ON Zembra_Functions (Func_MenuID)
GO
