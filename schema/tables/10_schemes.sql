-- Query schemes and control schemes, their frozen versions, and the kinds of controls.

CREATE TABLE Zembra_Query_Main (
  Query_ID int IDENTITY PRIMARY KEY,
  Query_Name nvarchar(200),
  Query_Desc nvarchar(max),
  Query_Fields nvarchar(max),
  Zembra_WriteDate datetime,
  Zembra_User nvarchar(50),
  Zembra_ModiUser nvarchar(50),
  Zembra_ModiDate datetime,
  Query_Prikey nvarchar(20),
  Query_System int DEFAULT 0,
  Query_Dic int,
  Query_MainTBID int,
  Query_Vir nvarchar(max),
  Query_Rel nvarchar(max),
  Query_Static nvarchar(max),
  Query_Group nvarchar(2000),
  Query_MultiRel int DEFAULT 0,
  Query_MultiRelSel nvarchar(2000),
  Query_HasStatic int DEFAULT 0,
  Query_IsDataAlert int DEFAULT 0,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Query_Main_Table ON Zembra_Query_Main (Query_MainTBID)
GO
CREATE INDEX IX_Query_Main_Directory ON Zembra_Query_Main (Query_Dic)
GO
-- Every save asks whether the name is in use.
CREATE INDEX IX_Query_Main_Name ON Zembra_Query_Main (Query_Name)
GO
-- The list of schemes comes by it, page for page.
CREATE INDEX IX_Query_Main_Written ON Zembra_Query_Main (Zembra_WriteDate)
GO

-- Rows are never changed: a changed scheme gets a new version.
CREATE TABLE Zembra_Query_Ver2 (
  Zembra_ID int IDENTITY PRIMARY KEY,
  Query_ID int,
  Query_Name nvarchar(200),
  Query_Desc nvarchar(max),
  Query_Fields nvarchar(max),
  Zembra_WriteDate datetime,
  Query_Prikey nvarchar(20),
  Query_Dic int,
  Query_System int,
  Query_HasStatic int,
  Query_IsDataAlert int,
  Zembra_Flag int DEFAULT 1,
  Zembra_ModiDate datetime,
  Zembra_ModiUser nvarchar(50),
  Zembra_User nvarchar(50),
  Query_MultiRelSel nvarchar(2000),
  Query_MultiRel int
)
GO
CREATE INDEX IX_Query_Ver2_Query ON Zembra_Query_Ver2 (Query_ID, Zembra_ModiDate)
GO

CREATE TABLE Zembra_Query_Field (
  QF_ID int IDENTITY PRIMARY KEY,
  QF_Name nvarchar(200),
  QF_Desc nvarchar(max),
  QF_NameID int,
  QF_Field nvarchar(1000),
  QF_CField nvarchar(1000),
  QF_Table nvarchar(1000),
  QF_CTable nvarchar(1000),
  QF_Relation nvarchar(max),
  QF_FieldType int,
  QF_System int DEFAULT 0,
  Zembra_Flag int DEFAULT 1,
  Zembra_CreateDate datetime DEFAULT getdate(),
  Zembra_ModiDate datetime DEFAULT getdate()
)
GO
CREATE INDEX IX_Query_Field_Scheme ON Zembra_Query_Field (QF_NameID, QF_FieldType)
GO

CREATE TABLE Zembra_Query_Type (
  QF_Type_ID int PRIMARY KEY,
  QF_Type_Name nvarchar(50)
)
GO

CREATE TABLE Zembra_Query_Field_Ver2 (
  Zembra_ID int IDENTITY PRIMARY KEY,
  QF_ID int,
  QF_NameID int,
  QF_Name nvarchar(200),
  QF_CField nvarchar(1000),
  QF_FieldType int,
  QF_Relation nvarchar(max),
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_Query_Field_Ver2_Scheme ON Zembra_Query_Field_Ver2 (QF_NameID, QF_ID)
GO
