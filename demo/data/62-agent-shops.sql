-- The agents' own shop categories, which their menus show; the last one leads elsewhere.
Insert Into Rk_ShopItem (Id, ItemName, Link, ParentID, Depth, ChildStr, ServDay, Info, ShowIndex, sysType, AgentUser) Values
  (91, '店铺装修', NULL, 0, 0, '91', 0, '首页与商品页', 1, 'RkHost', 'blue'),
  (92, 'Web design', NULL, 0, 0, '92', 0, 'From one page to a shop', 1, 'RkHost', 'green'),
  (93, 'Status', 'http://status.example/', 0, 0, '93', 0, NULL, 0, 'RkHost', 'green');

Insert Into Rk_ShopList (ShopName, ItemId, Price, MonPrice, ThMonPrice, HfyPrice, DanWei, shInfo, Info, PicUrl, AgentUser) Values
  ('首页装修', 91, 260, NULL, NULL, NULL, '次', '三天完成', '含两次修改', '/images/hero.svg', 'blue'),
  ('Five pages', 92, 1500, NULL, NULL, NULL, 'site', 'Ready in ten days', 'With a year of hosting', '/images/hero.svg', 'green');
