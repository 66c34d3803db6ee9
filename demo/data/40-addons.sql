-- Databases, mail and domains.
Insert Into Rk_SqlList (Id, DbName, db_MaxSize, lg_MaxSize, Price, freeSql, ProClass, AgentS) Values
  (1, 'SQL 500 型', 500, 250, 198, 0, 31, 1),
  (2, 'SQL 1000 型', 1000, 500, 368, 0, 31, 1),
  (3, 'SQL 2000 型', 2000, 1000, 668, 0, 33, 1);

Insert Into Rk_MySqlList (Id, DbName, db_MaxSize, Price, freeSql, ProClass, AgentS) Values
  (1, 'MySQL 200 型', 200, 80, 0, 31, 1),
  (2, 'MySQL 500 型', 500, 150, 0, 31, 1),
  (3, 'MySQL 1000 型', 1000, 268, 0, 33, 1),
  (4, 'MySQL 2000 型', 2000, 468, 0, 33, 1),
  (5, 'MySQL 赠送型', 100, 0, 1, 31, 0);

Insert Into Rk_MailList (Id, MailName, Size, Num, Price, freeMail, ProClass, AgentS) Values
  (1, '邮局 5 用户', 5000, 5, 98, 0, 32, 1),
  (2, '邮局 20 用户', 20000, 20, 298, 0, 32, 1),
  (3, '邮局 50 用户', 50000, 50, 598, 0, 34, 1);

Insert Into Rk_DomainList (Id, Domain, Type, DefaultCheck, cndomain, Money, UpdateMoney, AgentS, IdKey) Values
  (1, '.com', '.com', 1, 0, 65, 78, 1, 90),
  (2, '.cn', '.cn', 1, 0, 35, 45, 1, 80),
  (3, '.net', '.net', 0, 0, 75, 88, 1, 70),
  (4, '.com.cn', '.com.cn', 0, 0, 35, 45, 1, 60),
  (5, '.org', '.org', 0, 0, 80, 92, 1, 50),
  (6, '.中国', '.中国', 0, 1, 280, 280, 1, 40),
  (7, '.公司', '.公司', 0, 1, 260, 260, 0, 30),
  (8, '.网络', '.网络', 1, 1, 240, 240, 1, 20);
