-- News, links, cases, downloads, payments and shop: a few rows of each.
Insert Into Rk_News (Type, Title, Time, AgentUser, EveryOne) Values
  ('news', '香港机房线路升级完成', '2026-10-08 09:30:00', NULL, 1),
  ('news', '标准型主机空间全面加倍', '2026-10-21 10:00:00', '', 0),
  ('help', '如何把域名解析到主机', '2026-09-02 15:20:00', NULL, 1),
  ('news', '小店主机赠送模板二十套', '2026-11-02 11:00:00', 'blue', 0),
  ('news', 'New data centre in Frankfurt', '2026-11-05 08:00:00', 'green', 0);

-- Partners (text or a picture of 88 by 31), and sites of hosting customers, known by their FTP account.
Insert Into Rk_Links (linkName, linkUrl, linkType, linkPic, FtpUser, BePass, AgentUser) Values
  ('网站建设教程', 'http://learn.example/', 0, NULL, NULL, 1, NULL),
  ('站长工具', 'http://tools.example/', 0, NULL, '', 1, NULL),
  ('域名百科', 'http://names.example/', 1, '/images/link1.svg', NULL, 1, NULL),
  ('开源程序站', 'http://source.example/', 1, '/images/link2.svg', NULL, 1, NULL),
  ('设计素材库', 'http://design.example/', 0, NULL, NULL, 1, NULL),
  ('网店经营者论坛', 'http://forum.example/', 0, NULL, NULL, 1, NULL),
  ('数据中心观察', 'http://racks.example/', 1, '/images/link3.svg', NULL, 1, NULL),
  ('中小企业服务网', 'http://firms.example/', 0, NULL, NULL, 1, NULL),
  ('字体之家', 'http://fonts.example/', 1, '/images/link4.svg', NULL, 1, NULL),
  ('茶馆', 'http://tea.example/', 0, NULL, 'tea01', 1, NULL),
  ('云水茶业', 'http://yunshui.example/', 0, NULL, 'yunshui', 1, NULL),
  ('南山书店', 'http://books.example/', 0, NULL, 'nanshan', 1, NULL),
  ('青禾果园直营店', 'http://orchard.example/', 0, NULL, 'qinghe', 1, NULL),
  ('长风机械', 'http://wind.example/', 0, NULL, 'changfeng', 1, NULL),
  ('本地生活指南', 'http://local.example/', 0, NULL, 'guide', 1, NULL),
  ('待审核的站点', 'http://new.example/', 0, NULL, NULL, 0, NULL),
  ('海边小店', 'http://shop.example/', 0, NULL, NULL, 1, 'blue'),
  ('开店笔记', 'http://notes.example/', 0, NULL, NULL, 1, 'blue'),
  ('手作市集', 'http://market.example/', 1, '/images/link5.svg', NULL, 1, 'blue'),
  ('街角咖啡', 'http://coffee.example/', 0, NULL, 'coffee', 1, 'blue'),
  ('木作工作室', 'http://wood.example/', 0, NULL, 'wood', 1, 'blue'),
  ('Northwind Joinery', 'http://joinery.example/', 0, NULL, 'joinery', 1, 'green'),
  ('Harbour Tea', 'http://harbour.example/', 0, NULL, 'harbour', 1, 'green'),
  ('Webmasters'' Weekly', 'http://weekly.example/', 0, NULL, NULL, 1, 'green'),
  ('Open Web Friends', 'http://friends.example/', 1, '/images/link6.svg', NULL, 1, 'green'),
  ('The Domain Almanac', 'http://almanac.example/', 0, NULL, NULL, 1, 'green');

Insert Into Rk_Success (SiteName, SiteUrl, Info, PicUrl, succlass, AgentUser) Values
  ('云水茶业', 'http://tea.example/', '品牌展示与在线订购', '/images/case2.svg', '企业网站', NULL),
  ('南山书店', 'http://books.example/', '图书商城', '/images/case4.svg', '商城', NULL),
  ('海边小店', 'http://shop.example/', '手工饰品商城', '/images/case6.svg', '小店', 'blue');

Insert Into Rk_DownLoad (DownName, DownICO, DownUrl, AgentUser) Values
  ('主机使用手册', '/images/sign-book.svg', '/files/manual.txt', NULL),
  ('FTP 上传入门', '/images/sign-tool.svg', '/files/upload.txt', NULL),
  ('域名过户申请表', '/images/sign-form.svg', '/files/transfer.txt', ''),
  ('上线前检查清单', '/images/sign-check.svg', '/files/checklist.txt', NULL),
  ('开店十步', '/images/sign-book.svg', '/files/shop.txt', 'blue'),
  ('上线前检查清单', '/images/sign-check.svg', '/files/checklist.txt', 'blue'),
  ('Hosting handbook', '/images/sign-book.svg', '/files/handbook.txt', 'green'),
  ('Checklist before you go live', '/images/sign-check.svg', '/files/checklist-en.txt', 'green');

Insert Into Rk_NCompany (City, Tel) Values
  ('广州', '020-5550 0100'),
  ('成都', '028-5550 0100'),
  ('上海', '021-5550 0100'),
  ('武汉', '027-5550 0100'),
  ('西安', '029-5550 0100'),
  ('北京', '010-5550 0100');

Insert Into Rk_Ads (picurl, link, adinfo, AgentUser) Values
  ('/images/slide1.svg', '/host/index.asp?ServerId=2', '标准型主机空间加倍', NULL),
  ('/images/slide2.svg', '/host/index.asp?ServerId=5', '香港、东京、法兰克福，海外机房免备案', NULL),
  ('/images/slide3.svg', '/shop?Id=1', '从第一件商品到整座商城', ''),
  ('/images/slide4.svg', '/shop?Id=5', '每晚备份，保留三十天', NULL),
  ('/images/slide-blue1.svg', '/host/index.asp', '小店开张，主机先行', 'blue'),
  ('/images/slide-blue2.svg', '/shop?Id=91', '装修一次，卖上一年', 'blue'),
  ('/images/slide-green1.svg', '/host/index.asp?ServerId=23', 'Close to your visitors', 'green'),
  ('/images/slide-green2.svg', '/news/index.asp', 'Thirty nights of backups', 'green'),
  ('/images/slide-green3.svg', '/host/index.asp', 'Quiet servers', 'green');

Insert Into Pay (AgentUser, PayType, PayIco, PayInfo) Values
  (NULL, '银行转账', '/images/sign-bank.svg', '户名：山海主机（演示）'),
  ('', '汇款', '/images/sign-post.svg', '请在附言中写明用户名'),
  ('blue', '银行转账', '/images/sign-bank.svg', '户名：蓝湾建站（演示）');

Insert Into Rk_ShopItem (Id, ItemName, Link, ParentID, Depth, ChildStr, ServDay, Info, ShowIndex, sysType, AgentUser) Values
  (1, '网站建设', NULL, 0, 0, '1,3,4', 0, '从设计到上线', 1, 'RkHost', NULL),
  (2, '安全服务', NULL, 0, 0, '2', 1, '按年服务', 1, 'RkHost', NULL),
  (3, '展示网站', NULL, 1, 1, '3', 0, '五页起', 0, 'RkHost', NULL),
  (4, '商城网站', NULL, 1, 1, '4', 0, '含支付接口', 0, 'RkHost', NULL);

Insert Into Rk_ShopList (ShopName, ItemId, Price, MonPrice, ThMonPrice, HfyPrice, DanWei, shInfo, Info, PicUrl, AgentUser) Values
  ('五页展示站', 3, 1200, NULL, NULL, NULL, '个', '五个页面，七个工作日', '含一年主机', '/images/hero.svg', NULL),
  ('标准商城', 4, 6800, NULL, NULL, NULL, '个', '商品、订单、支付', '含两年主机', '/images/hero.svg', NULL),
  ('证书', 2, 380, 38, 105, 200, '年', '域名证书', '自动续期', '/images/logo.svg', NULL);
