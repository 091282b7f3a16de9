-- What happened to the dictionary after the schemes were saved. Stored statements know nothing of it
-- until their table is updated.

-- Display names changed: titles of stored statements are the old ones.
UPDATE Zembra_DataDict_Field SET DDF_CName = N'授信额度' WHERE Zembra_ID = 1106
GO
UPDATE Zembra_DataDict_Table SET DDT_CName = N'物料类别' WHERE Zembra_ID = 22
GO

-- The customers' web addresses were entered in the dictionary: statements do not list them yet.
SET IDENTITY_INSERT Zembra_DataDict_Field ON
GO
INSERT INTO Zembra_DataDict_Field (Zembra_ID, DDF_TableID, DDF_Name, DDF_CName, DDF_Type)
VALUES (1114, 11, 'Website', N'网址', 0)
GO
SET IDENTITY_INSERT Zembra_DataDict_Field OFF
GO
UPDATE UserTb_Customer SET Website = 'www.c' + CAST(1000 + Zembra_ID AS varchar(10)) + '.example'
WHERE Zembra_ID % 3 = 0
GO

-- Birthdays of contacts were withdrawn: statements still read them.
UPDATE Zembra_DataDict_Field SET Zembra_Flag = 0 WHERE Zembra_ID = 1206
GO

-- The telephone field of the staff now means the office line: statements still read the mobile number.
UPDATE UserTb_Employee SET WorkPhone = '0512-8000' + RIGHT('0000' + CAST(1000 + Zembra_ID AS varchar(10)), 4)
GO
UPDATE Zembra_DataDict_Field SET DDF_Name = 'WorkPhone', DDF_CName = N'办公电话' WHERE Zembra_ID = 7207
GO

-- The overtime column was once called ExtraHours; this statement was stored then, nobody updated the
-- table since, and it no longer runs. Updating the table's schemes repairs it.
UPDATE Zembra_Query_Main SET Query_Fields = REPLACE(Query_Fields, '[OverHours]', '[ExtraHours]')
WHERE Query_ID = 19
GO
