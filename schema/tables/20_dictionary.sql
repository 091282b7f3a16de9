-- The data dictionary: directories, tables, fields and relations of the business data.

CREATE TABLE Zembra_Dict_TableDir (
  Zembra_ID int IDENTITY PRIMARY KEY,
  TD_Name nvarchar(100),
  Zembra_Flag int DEFAULT 1,
  Zembra_WriteDate datetime DEFAULT getdate()
)
GO

-- DDT_ID and DDF_ID are second names of the keys; readers use either.
CREATE TABLE Zembra_DataDict_Table (
  Zembra_ID int IDENTITY PRIMARY KEY,
  DDT_ID AS Zembra_ID,
  DDT_Name nvarchar(128),
  DDT_CName nvarchar(128),
  DDT_DirID int,
  DDT_Status int DEFAULT 0,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_DataDict_Table_Directory ON Zembra_DataDict_Table (DDT_DirID)
GO

CREATE TABLE Zembra_DataDict_Field (
  Zembra_ID int IDENTITY PRIMARY KEY,
  DDF_ID AS Zembra_ID,
  DDF_TableID int,
  DDF_Name nvarchar(128),
  DDF_CName nvarchar(128),
  DDF_Type int DEFAULT 0,
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_DataDict_Field_Table ON Zembra_DataDict_Field (DDF_TableID, DDF_Type)
GO

-- The four names repeat what the ids say, for lists that show a relation without a look-up.
CREATE TABLE Zembra_DataDict_Relation (
  Zembra_ID int IDENTITY PRIMARY KEY,
  DDR_MainTableID int,
  DDR_MainFieldID int,
  DDR_RelationTableID int,
  DDR_RelationFieldID int,
  DDR_MainTableName nvarchar(128),
  DDR_MainFieldName nvarchar(128),
  DDR_RelationTableName nvarchar(128),
  DDR_RelationFieldName nvarchar(128),
  Zembra_ModiDate datetime DEFAULT getdate(),
  Zembra_Flag int DEFAULT 1
)
GO
CREATE INDEX IX_DataDict_Relation_Main ON Zembra_DataDict_Relation (DDR_MainTableID)
GO
CREATE INDEX IX_DataDict_Relation_Relation ON Zembra_DataDict_Relation (DDR_RelationTableID)
GO

CREATE TABLE Zembra_Dict_FieldType (
  Zembra_ID int IDENTITY PRIMARY KEY
)
GO
