# Statements over the platform's own tables. A line that holds only GO parts them.

# The operation log.
 insert into Zembra_OperateLog(OperateLog_UID,OperateLog_ModulID,OperateLog_SQL) values(127,204,'select a from [T] where b=''it''''s''')
GO
 insert into Zembra_OperateLog(OperateLog_UID,OperateLog_ModulID,OperateLog_SQL) values(-1,0,'Batch update')
GO

# The page frame and the manager page.
select Menu_ID From Zembra_Menu Where Menu_ID =31 and Menu_ParentID = 204
GO
select Menu_AddValue from Zembra_Menu Where Menu_AddType = 1 and   Menu_ID = 31
GO
 SELECT  TOP 1 Zembra_ID FROM  Zembra_WorkFlow_Custom wf WHERE       WF_SameFlag =12 ORDER BY Zembra_ID DESC 
GO
Select Menu_Name, Menu_ID, Menu_Desc, Menu_Href From Zembra_Menu,Zembra_permission Where  permission_UserID = 127 AND Menu_ID = permission_MenuID AND permission_forbid <> 1 and Menu_ParentID In (Select Menu_ParentID From Zembra_Menu Where Menu_ID = 31) And Menu_Name <> ''  Order By Menu_Order
GO
select a.Query_ID as queryid,a.Query_Name as queryname,b.TD_Name as dicname,ss =  CASE a.Query_System WHEN 0 THEN '用户' WHEN 1 THEN '系统' END,a.Query_Desc as querydesc,a.Zembra_WriteDate as writedate from Zembra_Query_Main as a , Zembra_Dict_TableDir as b where a.Zembra_Flag <> 0 and a.Query_Dic=b.Zembra_ID and Query_IsDataAlert = 0 and ('orvane'='orvane') order by  a.Zembra_WriteDate DESC
GO
select a.Query_ID as queryid,a.Query_Name as queryname,b.TD_Name as dicname,ss =  CASE a.Query_System WHEN 0 THEN '用户' WHEN 1 THEN '系统' END,a.Query_Desc as querydesc,a.Zembra_WriteDate as writedate from Zembra_Query_Main as a , Zembra_Dict_TableDir as b where a.Zembra_Flag <> 0 and a.Query_Dic=b.Zembra_ID and Query_IsDataAlert = 0 and ('orvane'='orvane') and  b.Zembra_ID =3  and a.Query_Name like '%合同%'
GO
select Zembra_ID , TD_Name from Zembra_Dict_TableDir where Zembra_Flag <> 0
GO

# The wizard: directories, tables, fields, relations.
select DDT_DirID from Zembra_DataDict_Table where Zembra_ID=20
GO
select Zembra_ID,TD_Name from Zembra_Dict_TableDir where Zembra_Flag<>0
GO
select Query_Vir,Query_Rel,Query_Static,Query_Group,Query_MultiRel from Zembra_Query_Main where Query_ID=7
GO
select Zembra_ID,DDR_MainTableName,DDR_MainFieldName,DDR_RelationTableName,DDR_RelationFieldName from Zembra_DataDict_Relation where DDR_MainTableID=20 or DDR_RelationTableID=20 order by Zembra_ModiDate DESC
GO
select DDR_MainTableID from Zembra_DataDict_Relation where DDR_RelationTableID=20 union select DDR_RelationTableID from Zembra_DataDict_Relation where DDR_MainTableID=20
GO
select Zembra_ID from Zembra_DataDict_Relation where DDR_RelationTableID=21 union select Zembra_ID from Zembra_DataDict_Relation where DDR_MainTableID=21
GO
select Zembra_ID,DDR_MainTableName,DDR_MainFieldName,DDR_RelationTableName,DDR_RelationFieldName from Zembra_DataDict_Relation where Zembra_ID in (31,32,31,33) order by Zembra_ModiDate DESC
GO
select Query_MultiRelSel,Query_Vir,Query_Rel,Query_Static from Zembra_Query_Main where Query_ID=7
GO
select Zembra_ID,DDR_MainTableName,DDR_MainFieldName,DDR_RelationTableName,DDR_RelationFieldName from Zembra_DataDict_Relation where Zembra_ID in (0)
GO
select b.Zembra_ID,'*'+a.DDT_CName+'.'+b.DDF_CName from Zembra_DataDict_Table as a,Zembra_DataDict_Field as b where b.DDF_TableID = 21 and b.Zembra_Flag <> 0 and a.Zembra_ID=b.DDF_TableID union select b.Zembra_ID,'*'+a.DDT_CName+'.'+b.DDF_CName from Zembra_DataDict_Table as a,Zembra_DataDict_Field as b where b.DDF_TableID = 23 and b.Zembra_Flag <> 0 and a.Zembra_ID=b.DDF_TableID union select b.Zembra_ID,a.DDT_CName+'.'+b.DDF_CName from Zembra_DataDict_Table as a,Zembra_DataDict_Field as b where b.DDF_TableID = 20 and b.Zembra_Flag <> 0 and a.Zembra_ID=b.DDF_TableID union select -1,'--选择字段--'
GO
select Query_Vir from Zembra_Query_Main where Query_ID=7
GO
select Query_rel from Zembra_Query_Main where Zembra_Flag <> 0 and Query_ID=7
GO
select Zembra_ID,'*'+DDF_CName from Zembra_DataDict_Field where DDF_TableID = 21 and Zembra_Flag <> 0 and (NOT (DDF_Type IN (1 , 10 , 11 , 12 , 13 , 14))) union select Zembra_ID,DDF_CName from Zembra_DataDict_Field where DDF_TableID in (20) and (NOT (DDF_Type IN (1 , 10 , 11 , 12 , 13 , 14))) and Zembra_Flag <> 0 union select -1,'差额' union select -2,'年份' union select -1000,'--不分组--'
GO
select Query_Group,Query_Static,Query_Vir from Zembra_Query_Main where  Zembra_Flag <> 0 and query_ID=7
GO

# Saving, deleting and freezing a scheme.
select Query_Name , Query_Desc , Query_System , Query_Dic from Zembra_Query_Main where Query_ID=7
GO
select Zembra_ID,TD_Name from Zembra_Dict_TableDir where Zembra_Flag <> 0 order by Zembra_WriteDate DESC
GO
select count(Query_Name) from Zembra_Query_Main where Query_Name = '合同一览' and Zembra_Flag <> 0 and Query_IsDataAlert = 0
GO
select Zembra_ID from Zembra_DataDict_Field where DDF_TableID=20 and DDF_Type=1
GO
update Zembra_Query_Main set Query_Name='合同一览',Query_Desc='',Query_Fields='select [T].[A] as [甲] from [T] where ( [T].[B] = ''x'' )',Query_HasStatic='0',Query_Prikey='200',Query_System='0',Query_Dic='3',Zembra_ModiUser='127',Zembra_ModiDate='2024-3-5 9:08:07',Query_MainTBID='20',Query_Vir='差额:[202]-[203]',Query_Rel='201,7,甲,and|||202,1,100,-1',Query_Static='',Query_Group='',Query_MultiRel=0,Query_MultiRelSel='31,32' where Query_ID=7
GO
insert into Zembra_Query_Main(Query_Name,Query_Desc,Query_Fields,Zembra_WriteDate,Query_Prikey,Query_System,Query_Dic,Zembra_User,Query_MainTBID,Query_Vir,Query_Rel,Query_Static,Query_Group,Query_MultiRel,Query_MultiRelSel) values('合同一览','说明','select [T].[A] from [T]','2024-3-5 9:08:07','200','','3','127','20','','','','',1,'')
GO
update Zembra_Query_Main set Query_Name='汇总',Query_Desc='',Query_Fields='select SUM([T].[A]) as [总] from [T]',Query_HasStatic='1',Query_Prikey='',Query_System='1',Query_Dic='3',Zembra_ModiUser='127',Zembra_ModiDate='2024/3/5',Query_MainTBID='20',Query_Vir='',Query_Rel='',Query_Static='202,4|||-1,1',Query_Group='201,-2' where Query_ID=7
GO
insert into Zembra_Query_Main(Query_Name,Query_Desc,Query_Fields,Zembra_WriteDate,Query_Prikey,Query_System,Query_Dic,Zembra_User,Query_MainTBID,Query_Vir,Query_Rel,Query_Static,Query_Group,Query_HasStatic) values('汇总','','select 1','2024-3-5 9:08:07','200','1','3','127','20','','','202,4','','1')
GO
select Query_Name from Zembra_Query_Main where Query_ID=7
GO
update Zembra_Query_Main set Zembra_Flag = 0 where Query_ID in (7,8)
GO
update Zembra_Query_Field set Zembra_Flag = 0 where QF_NameID in (7,8)
GO
SELECT DISTINCT b.Zembra_ID FROM Zembra_DataDict_Field as a INNER JOIN Zembra_DataDict_Table as b ON a.DDF_TableID  =  b.Zembra_ID where a.Zembra_ID in (200,220)
GO
select Query_ID,Query_Name,Query_Desc,Query_Fields,Zembra_WriteDate,Query_Prikey,Query_Dic,Query_System,Query_HasStatic,Query_IsDataAlert,Zembra_Flag,Zembra_ModiDate,Zembra_ModiUser,Zembra_User,Query_MultiRelSel,Query_MultiRel from Zembra_Query_Main where Query_ID=7
GO
select Zembra_ID from Zembra_Query_Ver2 where Query_ID=7 and Zembra_ModiDate >=''
GO
select Zembra_ID from Zembra_Query_Ver2 where Query_ID=7 and Zembra_ModiDate >='2024-3-5 9:08:07'
GO
insert Zembra_Query_Ver2(Query_ID,Query_Name,Query_Desc,Query_Fields,Zembra_WriteDate,Query_Prikey,Query_Dic,Query_System,Query_HasStatic,Query_IsDataAlert,Zembra_Flag,Zembra_ModiDate,Zembra_ModiUser,Zembra_User,Query_MultiRelSel,Query_MultiRel) values('7','合同一览','','select ''x'' as [y]','2024-3-5 9:08:07','200','3','','0','0','1','','','127','31,32','')
GO
select Query_ID,Query_Vir,Query_Rel,Query_Static,Query_Group,Query_MultiRelSel from Zembra_Query_Main where Query_MainTBID=20
GO
update Zembra_Query_Main set Query_Fields='select [T].[A] as [甲] from [T]',Zembra_ModiDate='2024-3-5 9:08:07' where Query_ID=7
GO
select Query_ID from Zembra_Query_Main where Query_MainTBID=20
GO
select Query_MainTBID from Zembra_Query_Main where Query_MainTBID=20
GO

# The dictionary look-ups of the statement compilers.
select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Table as a,Zembra_DataDict_Field as b where a.Zembra_ID = b.DDF_TableID and b.Zembra_ID = 202
GO
select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Table as a, Zembra_DataDict_Field as b where b.Zembra_Flag <> 0 and b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = 202
GO
select b.DDT_Name,a.DDF_Name,b.DDT_CName,a.DDF_CName,b.Zembra_ID from Zembra_DataDict_Field as a,Zembra_DataDict_Table as b where a.Zembra_ID = 202 and a.DDF_TableID = b.Zembra_ID
GO
select a.DDT_Name,b.DDF_Name,a.Zembra_ID from Zembra_DataDict_Table as a, Zembra_DataDict_Field as b where b.Zembra_Flag <> 0 and b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = 202
GO
select Zembra_ID  from Zembra_DataDict_Field  where Zembra_Flag=1 and DDF_TableID=20
GO
select DDT_Name,DDT_CName  from Zembra_DataDict_Table  where Zembra_Flag=1 and Zembra_ID=20
GO
select t.DDT_Name,t.DDT_CName,f.DDF_Name,f.DDF_CName,DDF_Type=  case      when  (f.DDF_Type=1 or f.DDF_Type=10 or f.DDF_Type=11 or f.DDF_Type=12 or f.DDF_Type=13 or f.DDF_Type=14) then 1     when  (f.DDF_Type<>1 and f.DDF_Type<>10 and f.DDF_Type<>11 and f.DDF_Type<>12 and f.DDF_Type<>13 and f.DDF_Type<>14) then 0 end,t.Zembra_ID,DDF_Type= case      when  DDF_Type=1 then 1     when  DDF_Type<>1 then 0 end from Zembra_DataDict_Table as t,Zembra_DataDict_Field as f  where f.Zembra_Flag=1 and t.Zembra_Flag=1 and t.Zembra_ID=f.DDF_TableID and f.Zembra_ID=202
GO
select Zembra_ID,DDF_Name,DDF_CName from Zembra_DataDict_Field where DDF_TableID=20 and DDF_Type=1
GO
select DDR_MainFieldID, DDR_RelationFieldID from Zembra_DataDict_Relation where DDR_RelationTableID=21 and DDR_MainTableID=20
GO
select distinct DDR_RelationTableID from Zembra_DataDict_Relation a,Zembra_DataDict_Table b where DDT_Name='UserTb_Contract' and a.DDR_MainTableID=b.Zembra_ID
GO
select Zembra_ID from Zembra_Query_Field_Ver2 where QF_ID=9 and QF_NameID=7
GO
select a.DDF_CName from Zembra_DataDict_Field as a,Zembra_DataDict_Table as b where a.DDF_TableID=b.Zembra_ID and a.DDF_Name='Amount' and b.DDT_Name='UserTb_Contract'
GO
select DDT_CName from Zembra_DataDict_Table where DDT_Name='UserTb_Contract'
GO
select DDR_MainFieldID,DDR_RelationFieldID from Zembra_DataDict_Relation where DDR_RelationTableID=21 and DDR_MainTableID=20 and Zembra_ID in (31,33) union select DDR_RelationFieldID,DDR_MainFieldID from Zembra_DataDict_Relation where DDR_MainTableID=21 and DDR_RelationTableID=20 and Zembra_ID in (31,33)
GO
select DDR_RelationTableID,DDR_RelationFieldID,DDR_MainTableID,DDR_MainFieldID from Zembra_DataDict_Relation where DDR_MainTableID<>20 and DDR_RelationTableID<>20 and Zembra_ID in (31,33)
GO
 select 22,230,205,21,226,220 union  select 21,226,205,22,230,220 union select DDR_RelationTableID,DDR_RelationFieldID,DDR_MainFieldID,DDR_RelationTableID,DDR_RelationFieldID,0 from Zembra_DataDict_Relation where DDR_MainTableID=20 and Zembra_ID in (31,33) union select DDR_MainTableID,DDR_MainFieldID,DDR_RelationFieldID,DDR_MainTableID,DDR_MainFieldID,0 from Zembra_DataDict_Relation where DDR_RelationTableID=20 and Zembra_ID in (31,33)
GO

# Introspection, control statements and versions.
SELECT Query_Fields FROM Zembra_Query_Ver2 where Zembra_ID=4
GO
SELECT Query_Fields FROM Zembra_Query_Main where Query_ID=7
GO
select Query_Prikey from Zembra_Query_Ver2 where Zembra_ID = 4
GO
select Query_Prikey from Zembra_Query_Main where Query_ID = 7
GO
select DDF_TableID from Zembra_DataDict_Field where Zembra_ID=200
GO
select QF_CField,QF_FieldType from Zembra_Query_Field_Ver2 where Zembra_ID=5
GO
select QF_CField,QF_FieldType from Zembra_Query_Field where QF_ID=9
GO
select QF_Relation,QF_FieldType from Zembra_Query_Field_Ver2 where Zembra_ID = 5
GO
select QF_Relation,QF_FieldType from Zembra_Query_Field where QF_ID = 9
GO
select QF_Relation,QF_FieldType,QF_NameID from Zembra_Query_Field_Ver2 where Zembra_ID=5
GO
select QF_Relation,QF_FieldType,QF_NameID from Zembra_Query_Field where QF_ID=9
GO
select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Field as b,Zembra_DataDict_Table as a where b.Zembra_ID = 200 and b.DDF_TableID = a.Zembra_ID
GO
SELECT Query_MultiRelSel FROM Zembra_Query_Ver2 where Zembra_ID=4
GO
SELECT Query_MultiRelSel FROM Zembra_Query_Main where Query_ID=7
GO
SELECT QF_NameID FROM Zembra_Query_Field_Ver2 WHERE Zembra_ID = 5
GO
SELECT QF_NameID FROM Zembra_Query_Field WHERE QF_ID = 9
GO
select DDT_Name from Zembra_DataDict_Table where Zembra_ID=20
GO
select a.Zembra_ID , DDF_Name , b.DDR_MainFieldID from Zembra_DataDict_Field a,Zembra_DataDict_Relation b where  b.DDR_MainTableID=20 and b.DDR_RelationFieldID=a.Zembra_ID
GO
select a.Zembra_ID , a.DDT_Name from Zembra_DataDict_Table as a , Zembra_DataDict_Field as b where b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = 220
GO
select DDF_Name from Zembra_DataDict_Field where Zembra_ID = 220
GO
select DDF_Name from Zembra_DataDict_Field where DDF_TableID=21
GO
select b.Zembra_ID from Zembra_DataDict_Table as a , Zembra_DataDict_Field as b , Zembra_Dict_FieldType as c  where c.Zembra_ID in (3 , 5 , 7) and a.DDT_Name='UserTb_Contract' and b.DDF_Name='Amount' and b.DDF_TableID=a.Zembra_ID
GO
select a.Zembra_ID,a.DDF_CName,a.DDF_Type from Zembra_DataDict_Field as a,Zembra_DataDict_Table as b where a.DDF_Name = 'Amount' and b.DDT_Name = 'UserTb_Contract' and a.DDF_TableID = b.Zembra_ID
GO
select a.Zembra_ID,a.DDF_CName,a.DDF_Type from Zembra_DataDict_Field as a,Zembra_DataDict_Table as b where a.Zembra_ID = 202 and a.DDF_TableID = b.Zembra_ID
GO
select Zembra_ID,QF_Name from Zembra_Query_Field_Ver2 where QF_NameID = 4 and  QF_FieldType  =  1 and Zembra_Flag <> 0
GO
select QF_ID,QF_Name from Zembra_Query_Field where QF_NameID = 7 and  QF_FieldType  =  2 and Zembra_Flag <> 0
GO
select QF_ID,QF_Name from Zembra_Query_Field where QF_FieldType=3 and QF_NameID=7 and Zembra_Flag <> 0
GO
select Zembra_ID,QF_Name from Zembra_Query_Field_Ver2 where QF_FieldType=3 and QF_NameID=4 and Zembra_Flag <> 0
GO

# Control schemes.
select QF_Name from Zembra_Query_Field where QF_Name = '客户' and QF_NameID = 7 and Zembra_Flag <> 0 and QF_System=1
GO
select QF_Name from Zembra_Query_Field where QF_Name = '客户' and QF_NameID = 7
GO
select a.QF_ID as [标识列],a.QF_Name as [关系名称],b.QF_Type_Name as [控件类型],c.Query_Name as [查询方案] from Zembra_Query_Field as a,Zembra_Query_Type as b ,Zembra_Query_Main as c where a.QF_FieldType = b.QF_Type_ID and a.QF_NameID = c.Query_ID and a.QF_System = 0 and a.Zembra_Flag <> 0 and ('orvane'='orvane') order by a.Zembra_CreateDate DESC
GO
update Zembra_Query_Field set Zembra_Flag=0 where QF_ID in (9)
GO
select a.Query_ID,a.Query_Name,b.TD_Name,a.Zembra_WriteDate from Zembra_Query_Main as a , Zembra_Dict_TableDir as b where a.Zembra_Flag <> 0 and Query_System=0 and a.Query_IsDataAlert = 0 and ('orvane'='orvane') and a.Query_Dic=b.Zembra_ID order by a.Zembra_ModiDate DESC
GO
select Query_MainTBID from Zembra_Query_Main where Query_ID=7
GO
select str(a.QF_ID)+'|205' as id,a.QF_Name as [关系名称],b.QF_Type_Name as [控件类型],c.Query_Name as [查询方案],d.DDF_CName as [关联字段],a.Zembra_ModiDate as [创建时间] from Zembra_Query_Field as a ,Zembra_Query_Type as b, Zembra_Query_Main as c,Zembra_DataDict_Field as d  where c.Query_MainTBID=21 and a.QF_System=1 and a.QF_NameID=c.Query_ID and a.QF_FieldType = b.QF_Type_ID and a.Zembra_Flag <> 0 and d.Zembra_ID=205 union select str(a.QF_ID)+'|206' as id,a.QF_Name as [关系名称],b.QF_Type_Name as [控件类型],c.Query_Name as [查询方案],d.DDF_CName as [关联字段],a.Zembra_ModiDate as [创建时间] from Zembra_Query_Field as a ,Zembra_Query_Type as b, Zembra_Query_Main as c,Zembra_DataDict_Field as d  where c.Query_MainTBID=22 and a.QF_System=1 and a.QF_NameID=c.Query_ID and a.QF_FieldType = b.QF_Type_ID and a.Zembra_Flag <> 0 and d.Zembra_ID=206 
GO
select QF_ID from Zembra_Query_Field where QF_Name='客户' and QF_NameID=7 and Zembra_Flag<>0
GO
select QF_NameID from Zembra_Query_Field where QF_ID=9
GO
select Zembra_ID from Zembra_DataDict_Relation where (DDR_MainTableID=20 and DDR_RelationTableID=21 and DDR_MainFieldID=205 ) or ( DDR_MainTableID=21 and DDR_RelationTableID=20 and DDR_RelationFieldID=205)
GO
select QF_Field,QF_Table,QF_CField,QF_CTable,QF_Relation,QF_FieldType from Zembra_Query_Field where QF_ID = 9
GO
insert Zembra_Query_Field(QF_Name,QF_Desc,QF_NameID,QF_Field,QF_Table,QF_CField,QF_CTable,QF_Relation,QF_FieldType,Zembra_Flag,QF_System) values('客户','备注','7','ID,Name','Customer','编号,名称','客户','select [Customer].[ID],[Customer].[Name] from [Customer]|||205','1','1','0')
GO
 select a.Query_ID,a.Query_Name,a.Query_Desc,a.Zembra_WriteDate from Zembra_Query_Main as a,Zembra_Dict_TableDir as b where a.Query_System = 0 and a.Zembra_Flag <> 0 and a.Query_Dic=b.Zembra_ID and a.Query_IsDataAlert = 0 and a.Query_HasStatic <> 1 order by a.Zembra_ModiDate DESC
GO
insert Zembra_Query_Field(QF_Name,QF_NameID,QF_Field,QF_CField,QF_Table,QF_CTable,QF_Relation,QF_Desc,QF_FieldType) values('客户',7,',',',','Customer,Customer',',','select [Customer].[ID],[Customer].[Name] from [Customer] where [Customer].Zembra_Flag<> 0 and ([Customer].[Kind] = ''A'' )|||-1','备注',1)
GO
insert Zembra_Query_Field(QF_Name,QF_NameID,QF_Field,QF_CField,QF_Table,QF_CTable,QF_Relation,QF_Desc,QF_FieldType,QF_System) values('列表',7,'','','','','select [Customer].[ID],[Customer].[Name] as [客户.名称] from [Customer]|||名称','' , 3 , 0 )
GO
select QF_FieldType from Zembra_Query_Field where QF_ID = 9
GO
 select a.Query_ID,a.Query_Name,a.Query_Desc,a.Zembra_WriteDate from Zembra_Query_Main as a,Zembra_Dict_TableDir as b where a.Query_System = 1 and a.Query_IsDataAlert = 0 and a.Zembra_Flag <> 0 and a.Query_Dic=b.Zembra_ID order by a.Zembra_ModiDate DESC
GO
select a.DDT_Name,b.DDF_Name  from Zembra_DataDict_Table a ,Zembra_DataDict_Field b where a.Zembra_Flag=1 and b.Zembra_Flag=1 and b.DDF_TableID=a.Zembra_ID and a.Zembra_ID=20
GO
select DDR_MainTableID,DDR_RelationFieldID from Zembra_DataDict_Relation where DDR_RelationTableID=21 and Zembra_Flag=1
GO
select b.Zembra_ID,a.DDT_CName+'.'+b.DDF_CName from Zembra_DataDict_Table as a,Zembra_DataDict_Field as b where a.Zembra_ID=b.DDF_TableID and b.DDF_TableID=20
GO
select Zembra_ID,DDF_CName from Zembra_DataDict_Field where Zembra_ID in (205,206)
GO
select Zembra_ID from Zembra_DataDict_Table where DDT_Name='UserTb_Customer'
GO
select DDR_MainTableID from Zembra_DataDict_Relation where DDR_RelationTableID=21 and DDR_RelationFieldID=220
GO

# The organisation directory and permissions.
select User_Name From Zembra_User Where  user_ID = 127
GO
select Rank_ID , Rank_name from Zembra_Rank Where Rank_Index = 2
GO
select Quarters_ID , Quarters_name from Zembra_Quarters,zembra_user Where user_position = Quarters_ID and  User_ID = 127
GO
select Group_ID , Group_name from Zembra_Group,zembra_user Where user_groupID= group_ID and  User_ID = 127
GO
select group_ID  from Zembra_User , Zembra_Group where User_DeptID = group_ID and User_ID = 127
GO
 select Group_Name from Zembra_Group where Group_ID ='3'
GO
 select Group_Name from Zembra_Group where Group_ID =''
GO
select Menu_Name  from Zembra_Menu Where Menu_ID = 31
GO
select Rank_index From Zembra_User , Zembra_Rank Where User_RankID = Rank_ID and user_ID = 127
GO
 Select User_GroupID From Zembra_User where User_ID = 127
GO
 Select User_joinGroupID From Zembra_User where User_ID = 127
GO
select Group_ID , Group_name,Group_Type from Zembra_Group  where 1=1  And 1<>1  order by Group_Type
GO
select Group_ID , Group_name from Zembra_Group Where 1=1  And Group_ID in ( 3,4,5,0) 
GO
select Group_ID , Group_name from Zembra_Group Where 1=1  And Group_ID = 3 
GO
select Rank_ID , Rank_name from Zembra_Rank Where Rank_Index < = 3  order by Rank_Index  
GO
select Quarters_ID , Quarters_name from Zembra_Quarters  
GO
select Group_ID , Group_name from Zembra_Group Where Group_Type=0 
GO
select User_ID , User_user from Zembra_User  where User_GroupID = 3
GO
select Menu_ID , Menu_name from Zembra_Menu where Menu_name is not null and Menu_Href is null  
GO
select Icon_ID , icon_name ,icon_file  from Zembra_ICON Where Icon_ID = 2   union all select Icon_ID , icon_name ,icon_file  from Zembra_ICON  
GO
 select * from Zembra_Permission where Permission_MenuID=31 And Permission_UserID = 127 And CharIndex('add'+',',Permission_SubAction) > 0 
GO

# Task panels.
select top 5 /* Zembra_ID ,*/ '<span onclick="top.TarloY.showWebDialog(''TarloMyScheme.Zembra?action=AddMyTask&sFlag=0&sSort=9&id='+ CAST(Zembra_ID AS varchar(50))+''',680,510);">'+ CASE WHEN DateDiff (d , getdate() , MT_PlanEndDate ) >= 0  THEN (case when Len(MT_Topic)> 8 then substring(MT_Topic,1,8)+'...' else MT_Topic end )  ELSE '<font color=red>'+(case when Len(MT_Topic)> 8 then substring(MT_Topic,1,8)+'...' else MT_Topic end )+'</font>'  END +'</span>'  , CAST(DATEPART (yy,MT_StartDate)AS varchar(50))+'-'    + CAST(DATEPART (m,MT_StartDate) AS varchar(50))+'-'    + CAST(DATEPART (d,MT_StartDate) AS varchar(50))+' 至 '    + CAST(DATEPART (yy,MT_PlanEndDate)AS varchar(50))+'-'    + CAST(DATEPART (m,MT_PlanEndDate) AS varchar(50))+'-'    + CAST(DATEPART (d,MT_PlanEndDate) AS varchar(50))+'  '  as MyDate   FROM Zembra_MyTask_Record where Zembra_Flag = 1  And MT_UserID = ''  And MT_Status = 1  And DateDiff (d , MT_StartDate, getdate() ) >= 0  order by Zembra_ID desc 
GO
 SELECT  top 5  '<span onclick="top.TarloY.showWebDialog(''TarloWFInstance.Zembra?action=doTransactWindowWFI&intMenuID='+ CAST(menu.menu_ID AS varchar(50))+'&intPermission=0&intWorkFlowSame='+ CAST(WF_WorkName AS varchar(50))+'&intSort=1&intUID='+ CAST(M.Zembra_id AS varchar(50))+''',770,570);">'+menu.Menu_Name + ':' +    Case  WHEN len(A.WFIA_Name) < 6 then A.WFIA_Name  WHEN len(A.WFIA_Name) > 5 then substring(A.WFIA_Name,1,5) + '...' end AS 标题,  '<span onclick="top.TarloY.showWebDialog(''TarloWFInstance.Zembra?action=doTransactWindowWFI&intMenuID='+ CAST(menu.menu_ID AS varchar(50))+'&intPermission=0&intWorkFlowSame='+ CAST(WF_WorkName AS varchar(50))+'&intSort=1&intUID='+ CAST(M.Zembra_id AS varchar(50))+''',770,570);">'+   '等待'+      case      when (Select len(WFPS_NoName) From Zembra_WorkFlow_PerDot PD, Zembra_WorkFlowInstance_Main subM1 where PD.Zembra_ID=subM1.WFI_WorkFlowStepID and subM1.Zembra_id = M.Zembra_id) < 1         then (SELECT TOP 1 WFH_Name  FROM Zembra_WorkFlowInstance_Main subM,  Zembra_WorkFlowInstance_Handle H WHERE  H.Zembra_ID = subM.WFI_Status AND subM.WFI_InstanceID = M.WFI_InstanceID  AND subM.Zembra_id = M.Zembra_id ORDER BY subM.Zembra_ID DESC)         else          (Select top 1 WFPS_NoName From Zembra_WorkFlow_PerDot PD, Zembra_WorkFlowInstance_Main subM1 where PD.Zembra_ID=subM1.WFI_WorkFlowStepID and subM1.Zembra_id = M.Zembra_id)     end  AS 状态 , menu.menu_ID FROM  Zembra_WorkFlowInstance_Main M,  Zembra_WorkFlowInstance_Attribute A  , Zembra_WorkFlow_Custom  C      , Zembra_Menu menu WHERE M.WFI_InstanceID = A.WFIA_InstanceID       AND menu.Menu_AddValue =  c.WF_SameFlag AND menu.Menu_AddType=1  AND M.WFI_Keeping = 0   AND C.Zembra_ID = M.WFI_WorkFlowID  AND (       ( (M.WFI_NeedUser = (  SELECT  DISTINCT EPWF_sID   FROM Zembra_WFInstance_ExchangePermission   WHERE  EPWF_rID =  127   AND GETDATE() BETWEEN EPWF_StartDate AND EPWF_EndDate   ) ) OR M.WFI_NeedUser = 127) ) AND M.WFI_Action = 2 AND NOT M.Zembra_Flag in(0,2,3,4,5)   group by M.Zembra_ID,menu.menu_ID,menu.Menu_Name, C.WF_WorkName,A.WFIA_Name,M.WFI_InstanceID  ORDER BY M.Zembra_ID DESC 
GO
DECLARE  @strReturn varchar(50);EXEC Zembra_WorkFlowInstance_IsExistsTempMenu 31,@strReturn out;SELECT @strReturn 
GO
SELECT Exper_SID      FROM Zembra_ExchangePermission      WHERE   ExPer_RID = 127             AND ExPer_Para = 31
GO
Select top 1 TarloTable_SQLString,TarloTable_SQLString2 From Zembra_Temp_TarloTable Where TarloTable_SessionID = '934112' order by TarloTable_ID desc 
GO

# Services.
select SubHelp_title,SubHelp_popup from  Zembra_SubHelp , Zembra_Functions Where SubHelp_FuncID = Func_ID and Func_MenuID = 31 and Func_Action = 'addSearch' order by SubHelp_ID 
GO
select DDT_Name,DDT_CName from Zembra_DataDict_Table where DDT_Status <> 1
GO
select DDT_Name,DDT_CName from Zembra_DataDict_Table where substring(DDT_Name,1,7)='UserTb_' and DDT_Status <> 1
GO
SELECT DDF_Name,DDF_CName FROM Zembra_DataDict_Field WHERE DDF_TableID =(SELECT DDT_ID FROM Zembra_DataDict_Table WHERE DDT_Name ='UserTb_Contract')
GO
SELECT DDF_Name FROM Zembra_DataDict_Field WHERE DDF_TableID =(SELECT DDT_ID FROM Zembra_DataDict_Table WHERE DDT_Name ='UserTb_Contract') and DDF_Type=1
GO
SELECT DDT_ID FROM Zembra_DataDict_Table WHERE DDT_Name ='UserTb_Contract'
GO
SELECT DDF_ID FROM Zembra_DataDict_Field WHERE DDF_TableID =(SELECT DDT_ID FROM Zembra_DataDict_Table WHERE DDT_Name ='UserTb_Contract') and DDF_Name='Amount'
GO
select  Policy_ParaA,Policy_ParaB,Policy_ParaC,Policy_ParaD,Policy_ParaE,Policy_ParaF From Zembra_Policy Where Policy_Name = 'Mail'
GO

# The identity of a row just written.
insert Zembra_OperateLog(OperateLog_UID) values(1);select @@identity as NeoID
GO
set nocount on insert Zembra_OperateLog(OperateLog_UID) values(1) select SCOPE_IDENTITY() as NeoID
GO
