-- News, links, cases, downloads, payments and shop: a few rows of each.
Insert Into Rk_News (Type, Title, Time, AgentUser, EveryOne) Values
  ('news', '香港机房线路升级完成', '2026-10-08 09:30:00', NULL, 1),
  ('news', '标准型主机空间全面加倍', '2026-10-21 10:00:00', '', 0),
  ('help', '如何把域名解析到主机', '2026-09-02 15:20:00', NULL, 1),
  ('news', '小店主机赠送模板二十套', '2026-11-02 11:00:00', 'blue', 0),
  ('news', 'New data centre in Frankfurt', '2026-11-05 08:00:00', 'green', 0);

Insert Into Rk_Links (linkName, linkUrl, linkType, linkPic, FtpUser, BePass, AgentUser) Values
  ('网站建设教程', 'http://learn.example/', 0, NULL, NULL, 1, NULL),
  ('站长工具', 'http://tools.example/', 0, NULL, '', 1, NULL),
  ('茶馆', 'http://tea.example/', 0, NULL, 'tea01', 1, NULL),
  ('待审核的站点', 'http://new.example/', 0, NULL, NULL, 0, NULL),
  ('海边小店', 'http://shop.example/', 0, NULL, NULL, 1, 'blue');

Insert Into Rk_Success (SiteName, SiteUrl, Info, PicUrl, succlass, AgentUser) Values
  ('云水茶业', 'http://tea.example/', '品牌展示与在线订购', '/images/hero.svg', '企业网站', NULL),
  ('南山书店', 'http://books.example/', '图书商城', '/images/hero.svg', '商城', NULL),
  ('海边小店', 'http://shop.example/', '手工饰品商城', '/images/hero.svg', '小店', 'blue');

Insert Into Rk_DownLoad (DownName, DownICO, DownUrl, AgentUser) Values
  ('主机使用手册', '/images/logo.svg', '/files/manual.pdf', NULL),
  ('上传工具', '/images/logo.svg', '/files/upload.zip', NULL);

Insert Into Rk_NCompany (City, Tel) Values
  ('广州', '020-5550 0100'),
  ('成都', '028-5550 0100');

Insert Into Rk_Ads (picurl, link, adinfo, AgentUser) Values
  ('/images/hero.svg', '/host/index.asp', '标准型主机空间加倍', NULL),
  ('/images/logo.svg', '/contact.asp', '七天试用', NULL);

Insert Into Pay (AgentUser, PayType, PayIco, PayInfo) Values
  (NULL, '银行转账', '/images/logo.svg', '户名：山海主机（演示）'),
  ('', '汇款', '/images/logo.svg', '请在附言中写明用户名'),
  ('blue', '银行转账', '/images/logo-blue.svg', '户名：蓝湾建站（演示）');

Insert Into Rk_ShopItem (Id, ItemName, Link, ParentID, Depth, ChildStr, ServDay, Info, ShowIndex, sysType, AgentUser) Values
  (1, '网站建设', NULL, 0, 0, '1,3,4', 0, '从设计到上线', 1, 'RkHost', NULL),
  (2, '安全服务', NULL, 0, 0, '2', 1, '按年服务', 1, 'RkHost', NULL),
  (3, '展示网站', NULL, 1, 1, '3', 0, '五页起', 0, 'RkHost', NULL),
  (4, '商城网站', NULL, 1, 1, '4', 0, '含支付接口', 0, 'RkHost', NULL);

Insert Into Rk_ShopList (ShopName, ItemId, Price, MonPrice, ThMonPrice, HfyPrice, DanWei, shInfo, Info, PicUrl, AgentUser) Values
  ('五页展示站', 3, 1200, NULL, NULL, NULL, '个', '五个页面，七个工作日', '含一年主机', '/images/hero.svg', NULL),
  ('标准商城', 4, 6800, NULL, NULL, NULL, '个', '商品、订单、支付', '含两年主机', '/images/hero.svg', NULL),
  ('证书', 2, 380, 38, 105, 200, '年', '域名证书', '自动续期', '/images/logo.svg', NULL);
