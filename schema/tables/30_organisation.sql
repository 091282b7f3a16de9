-- Users, groups, ranks and positions, the menu tree and who may use it.

CREATE TABLE Zembra_User (
  User_ID int IDENTITY PRIMARY KEY,
  User_Name nvarchar(50),
  User_user nvarchar(50),
  User_GroupID int,
  User_joinGroupID nvarchar(500),
  User_RankID int,
  user_position int,
  User_DeptID int
)
GO
CREATE INDEX IX_User_Group ON Zembra_User (User_GroupID)
GO

CREATE TABLE Zembra_Group (
  Group_ID int IDENTITY PRIMARY KEY,
  Group_name nvarchar(100),
  Group_Type int DEFAULT 0
)
GO

CREATE TABLE Zembra_Rank (
  Rank_ID int IDENTITY PRIMARY KEY,
  Rank_name nvarchar(50),
  Rank_Index int
)
GO

CREATE TABLE Zembra_Quarters (
  Quarters_ID int IDENTITY PRIMARY KEY,
  Quarters_name nvarchar(100)
)
GO

CREATE TABLE Zembra_ICON (
  Icon_ID int IDENTITY PRIMARY KEY,
  icon_name nvarchar(100),
  icon_file nvarchar(200)
)
GO

-- A folder has NULL in Menu_Href; '' is not a folder.
CREATE TABLE Zembra_Menu (
  Menu_ID int IDENTITY PRIMARY KEY,
  Menu_Name nvarchar(100),
  Menu_Href nvarchar(500),
  Menu_ParentID int,
  Menu_AddType int DEFAULT 0,
  Menu_AddValue int,
  Menu_Desc nvarchar(500),
  Menu_Order int DEFAULT 0
)
GO
CREATE INDEX IX_Menu_Parent ON Zembra_Menu (Menu_ParentID)
GO
CREATE INDEX IX_Menu_Workflow ON Zembra_Menu (Menu_AddValue)
GO

CREATE TABLE Zembra_Permission (
  Permission_UserID int,
  Permission_MenuID int,
  Permission_SubAction nvarchar(2000),
  permission_forbid int DEFAULT 0
)
GO
CREATE INDEX IX_Permission_Menu ON Zembra_Permission (Permission_MenuID, Permission_UserID)
GO
CREATE INDEX IX_Permission_User ON Zembra_Permission (Permission_UserID)
GO
