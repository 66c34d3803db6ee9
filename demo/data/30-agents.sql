-- The agents' own names and prices of the master's plans; a plan without a row keeps the master's.

Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price, MonPrice, ProClass) Values
  ('blue', 3, 'Host', '欧洲 标准版', 578, 55, 13),
  ('blue', 5, 'Host', '东京 轻量版', 318, 30.5, 13),
  ('blue', 7, 'Host', '香港 标准版', 478, 46, 13),
  ('blue', 8, 'Host', '香港 轻量版', 189, 18.5, 13),
  ('blue', 21, 'Host', '小店 旗舰版', 1438, 138, 12),
  ('blue', 27, 'Host', '写作空间', 299, 28, 12),
  ('blue', 28, 'Host', '社群空间', 448, 42, 12),
  ('blue', 30, 'Host', '小店 数据版', 408, 38.5, 12),
  ('blue', 31, 'Host', '小店 成长版', 348, 33, 12),
  ('blue', 32, 'Host', '小店 基础版', 288, 27, 12),
  ('blue', 33, 'Host', '入门 8 号', 188, 18, 11),
  ('blue', 36, 'Host', '名片网页', 36, 0, 11),
  ('blue', 37, 'Host', '入门 5 号', 148, 14, 11),
  ('blue', 38, 'Host', '入门 3 号', 118, 11, 11),
  ('blue', 39, 'Host', '入门 2 号', 92, 0, 11),
  ('blue', 40, 'Host', '入门 1 号', 66, 0, 11);

Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price, MonPrice, ProClass) Values
  ('green', 1, 'Host', 'Export 20', 1065, 102.5, 23),
  ('green', 2, 'Host', 'Frankfurt 30', 1210, 115.5, 23),
  ('green', 3, 'Host', 'Frankfurt 10', 660, 63.5, 23),
  ('green', 4, 'Host', 'Tokyo 15', 770, 73.5, 23),
  ('green', 5, 'Host', 'Tokyo 5', 360, 34.5, 23),
  ('green', 6, 'Host', 'Hong Kong 20', 990, 94.5, 23),
  ('green', 7, 'Host', 'Hong Kong 10', 550, 53, 23),
  ('green', 8, 'Host', 'Hong Kong 3', 220, 21.5, 23),
  ('green', 9, 'Host', 'Oak Media', 5060, 489.5, 22),
  ('green', 14, 'Host', 'Oak 150', 4400, 423.5, 22),
  ('green', 15, 'Host', 'Oak 100', 3300, 317, 22),
  ('green', 16, 'Host', 'Oak 80', 2640, 253, 22),
  ('green', 17, 'Host', 'Branch 60', 1980, 192.5, 22),
  ('green', 18, 'Host', 'Branch Dual', 1745, 168.5, 22),
  ('green', 20, 'Host', 'Branch Press', 1540, 148.5, 22),
  ('green', 21, 'Host', 'Branch Shop', 1650, 159.5, 22),
  ('green', 22, 'Host', 'Branch 40', 1430, 137.5, 22),
  ('green', 23, 'Host', 'Branch 30', 1100, 105.5, 22),
  ('green', 24, 'Host', 'Branch 20', 880, 83.5, 22),
  ('green', 25, 'Host', 'Sprout 20', 715, 68, 22),
  ('green', 27, 'Host', 'Sprout Journal', 350, 33, 22),
  ('green', 28, 'Host', 'Sprout Forum', 515, 48.5, 22),
  ('green', 29, 'Host', 'Sprout 15', 580, 55, 22),
  ('green', 30, 'Host', 'Sprout 10', 470, 44, 22),
  ('green', 31, 'Host', 'Sprout 8', 405, 38.5, 22),
  ('green', 32, 'Host', 'Sprout 5', 330, 31, 22),
  ('green', 33, 'Host', 'Seed 8', 220, 21, 21),
  ('green', 36, 'Host', 'Seed Static', 45, 0, 21),
  ('green', 37, 'Host', 'Seed 5', 175, 16.5, 21),
  ('green', 38, 'Host', 'Seed 3', 140, 13, 21),
  ('green', 39, 'Host', 'Seed 2', 110, 0, 21),
  ('green', 40, 'Host', 'Seed 1', 75, 0, 21);

Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price, UpdatePrice) Values
  ('blue', 1, 'Domain', NULL, 59, 72),
  ('blue', 2, 'Domain', NULL, 29, 39),
  ('green', 1, 'Domain', NULL, 75, 88);

Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price) Values
  ('blue', 1, 'Sql', '小店数据库', 188),
  ('green', 1, 'Sql', 'SQL 500', 220),
  ('green', 1, 'MySql', 'MySQL 200', 90),
  ('green', 1, 'Mail', 'Mailbox 5', 110);
