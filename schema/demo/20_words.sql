-- Words and numbers that the demo rows are composed of. The sizes of the word lists have no common
-- factor, so that counting through several lists at once gives ever new combinations.

CREATE TABLE Demo_Number (N int PRIMARY KEY)
GO
INSERT INTO Demo_Number (N) VALUES
  (1), (2), (3), (4), (5), (6), (7), (8), (9), (10), (11), (12), (13), (14), (15), (16)
GO
INSERT INTO Demo_Number (N) SELECT N + 16 FROM Demo_Number
GO
INSERT INTO Demo_Number (N) SELECT N + 32 FROM Demo_Number
GO
INSERT INTO Demo_Number (N) SELECT N + 64 FROM Demo_Number
GO
INSERT INTO Demo_Number (N) SELECT N + 128 FROM Demo_Number
GO
INSERT INTO Demo_Number (N) SELECT N + 256 FROM Demo_Number
GO
INSERT INTO Demo_Number (N) SELECT N + 512 FROM Demo_Number
GO
INSERT INTO Demo_Number (N) SELECT N + 1024 FROM Demo_Number
GO
INSERT INTO Demo_Number (N) SELECT N + 2048 FROM Demo_Number
GO

-- RegionID is the sales region of the city.
CREATE TABLE Demo_City (ID int PRIMARY KEY, Name nvarchar(30), AreaCode nvarchar(10), RegionID int)
GO
INSERT INTO Demo_City (ID, Name, AreaCode, RegionID) VALUES
  (0, N'上海', N'021', 1), (1, N'苏州', N'0512', 1), (2, N'无锡', N'0510', 1),
  (3, N'常州', N'0519', 1), (4, N'南京', N'025', 1), (5, N'杭州', N'0571', 2),
  (6, N'宁波', N'0574', 2), (7, N'温州', N'0577', 2), (8, N'合肥', N'0551', 2),
  (9, N'深圳', N'0755', 3), (10, N'东莞', N'0769', 3), (11, N'佛山', N'0757', 3),
  (12, N'厦门', N'0592', 3), (13, N'北京', N'010', 4), (14, N'天津', N'022', 4),
  (15, N'石家庄', N'0311', 4), (16, N'青岛', N'0532', 5), (17, N'济南', N'0531', 5),
  (18, N'武汉', N'027', 6), (19, N'长沙', N'0731', 6), (20, N'成都', N'028', 7),
  (21, N'重庆', N'023', 7), (22, N'沈阳', N'024', 8)
GO

CREATE TABLE Demo_CompanyWord (ID int PRIMARY KEY, Word nvarchar(10))
GO
INSERT INTO Demo_CompanyWord (ID, Word) VALUES
  (0, N'恒远'), (1, N'德润'), (2, N'华泽'), (3, N'鼎晟'), (4, N'瑞丰'), (5, N'明川'), (6, N'启航'),
  (7, N'金麦'), (8, N'博锐'), (9, N'天佑'), (10, N'嘉禾'), (11, N'信达'), (12, N'众合'),
  (13, N'宏图'), (14, N'永固'), (15, N'泰和'), (16, N'雅正'), (17, N'翔宇'), (18, N'广源'),
  (19, N'盛科'), (20, N'立诚'), (21, N'卓越'), (22, N'新锐'), (23, N'安捷'), (24, N'海岳'),
  (25, N'长青'), (26, N'百川'), (27, N'思远'), (28, N'力拓'), (29, N'同创'), (30, N'凯旋'),
  (31, N'荣达'), (32, N'佳信'), (33, N'汇通'), (34, N'远景'), (35, N'精诚'), (36, N'旭日'),
  (37, N'东篱'), (38, N'南山'), (39, N'景行'), (40, N'万象')
GO

CREATE TABLE Demo_Trade (ID int PRIMARY KEY, Word nvarchar(20), Kind nvarchar(20))
GO
INSERT INTO Demo_Trade (ID, Word, Kind) VALUES
  (0, N'机械设备', N'终端客户'), (1, N'自动化技术', N'系统集成商'), (2, N'精密制造', N'终端客户'),
  (3, N'机电工程', N'系统集成商'), (4, N'贸易', N'经销商'), (5, N'数控机床', N'终端客户'),
  (6, N'包装机械', N'终端客户'), (7, N'电气', N'经销商'), (8, N'智能装备', N'系统集成商'),
  (9, N'纺织机械', N'终端客户'), (10, N'工业品销售', N'经销商'), (11, N'汽车零部件', N'终端客户'),
  (12, N'食品机械', N'终端客户'), (13, N'传动设备', N'经销商'), (14, N'光电科技', N'终端客户'),
  (15, N'印刷设备', N'终端客户'), (16, N'物流设备', N'系统集成商')
GO

CREATE TABLE Demo_Surname (ID int PRIMARY KEY, Word nvarchar(4))
GO
INSERT INTO Demo_Surname (ID, Word) VALUES
  (0, N'王'), (1, N'李'), (2, N'张'), (3, N'刘'), (4, N'陈'), (5, N'杨'), (6, N'黄'), (7, N'赵'),
  (8, N'吴'), (9, N'周'), (10, N'徐'), (11, N'孙'), (12, N'马'), (13, N'朱'), (14, N'胡'),
  (15, N'郭'), (16, N'何'), (17, N'林'), (18, N'罗'), (19, N'高'), (20, N'郑'), (21, N'梁'),
  (22, N'谢'), (23, N'宋'), (24, N'唐'), (25, N'许'), (26, N'韩'), (27, N'冯'), (28, N'邓'),
  (29, N'曹'), (30, N'彭'), (31, N'曾'), (32, N'肖'), (33, N'田'), (34, N'董'), (35, N'袁'),
  (36, N'潘'), (37, N'于'), (38, N'蒋'), (39, N'蔡'), (40, N'欧阳')
GO

CREATE TABLE Demo_GivenName (ID int PRIMARY KEY, Word nvarchar(4))
GO
INSERT INTO Demo_GivenName (ID, Word) VALUES
  (0, N'建国'), (1, N'秀英'), (2, N'伟'), (3, N'芳'), (4, N'志强'), (5, N'丽娟'), (6, N'磊'),
  (7, N'静'), (8, N'海涛'), (9, N'晓燕'), (10, N'明辉'), (11, N'雪梅'), (12, N'勇'), (13, N'敏'),
  (14, N'俊杰'), (15, N'婷婷'), (16, N'国栋'), (17, N'玉兰'), (18, N'鹏飞'), (19, N'佳怡'),
  (20, N'浩然'), (21, N'雨桐'), (22, N'文博'), (23, N'思琪'), (24, N'振华'), (25, N'淑华'),
  (26, N'凯'), (27, N'倩'), (28, N'立新'), (29, N'春梅'), (30, N'子轩'), (31, N'梦瑶'),
  (32, N'永康'), (33, N'慧'), (34, N'斌'), (35, N'莉'), (36, N'家豪'), (37, N'欣怡'), (38, N'德明'),
  (39, N'桂芳'), (40, N'超'), (41, N'琳'), (42, N'天宇'), (43, N'晨曦'), (44, N'庆丰'),
  (45, N'海燕'), (46, N'宏伟'), (47, N'红梅'), (48, N'少华'), (49, N'月娥'), (50, N'一鸣'),
  (51, N'若溪'), (52, N'正阳'), (53, N'诗涵'), (54, N'光明'), (55, N'翠萍'), (56, N'世杰'),
  (57, N'婉清'), (58, N'长江'), (59, N'素珍')
GO
