Insert Into Rk_Template (Id, templatePath, UseThis) Values (1, 'plain', 1);
Insert Into SysTem (SiteDomain) Values ('');
Insert Into Rk_ShopItem (Id, ItemName, Link, Depth, sysType) Values
  (12, '<b>Cards</b> & "more"', '', 0, 'RkHost'), (1, 'Elsewhere', 'http://a.example/?b=1&c=2', 0, 'RkHost'),
  (5, 'Below', NULL, 1, 'RkHost'), (6, 'Other system', NULL, 0, 'RkMail');
Insert Into Rk_CT (PostCode, Name, PinYin, simple) Values
  ('110000', '北京', 'BeiJing', 'BJ'), ('440000', '广东', 'GuangDong', 'GD'), ('440100', '广州', 'GuangZhou', NULL);
