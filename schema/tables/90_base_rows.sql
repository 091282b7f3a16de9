-- Rows that every installation has: the kinds of controls, and the field types that readers ask for.

INSERT INTO Zembra_Query_Type (QF_Type_ID, QF_Type_Name) VALUES
  (1, N'下拉框控件'),
  (2, N'级联框控件'),
  (3, N'列表框控件')
GO
SET IDENTITY_INSERT Zembra_Dict_FieldType ON
GO
INSERT INTO Zembra_Dict_FieldType (Zembra_ID) VALUES (3), (5), (7)
GO
SET IDENTITY_INSERT Zembra_Dict_FieldType OFF
GO
