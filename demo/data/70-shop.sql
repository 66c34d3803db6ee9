-- The shop: services by the year in tabs, more articles, and the agents' own.
Insert Into Rk_ShopItem (Id, ItemName, Link, ParentID, Depth, ChildStr, ServDay, Info, ShowIndex, sysType, AgentUser) Values
  (5, '云备份', NULL, 0, 0, '5,6,7', 1, '文件和数据库存放在另一座机房', 1, 'RkHost', NULL),
  (6, '文件备份', NULL, 5, 1, '6', 1, '每晚一次，保留三十天', 0, 'RkHost', NULL),
  (7, '数据库备份', NULL, 5, 1, '7', 1, '每小时一次，可恢复到任一时刻', 0, 'RkHost', NULL),
  (101, '小店服务', NULL, 0, 0, '101,102,103', 1, '开店以后的事', 1, 'RkHost', 'blue'),
  (102, '客服代班', NULL, 101, 1, '102', 1, '您休息，我们回复', 0, 'RkHost', 'blue'),
  (103, '商品摄影', NULL, 101, 1, '103', 1, '每月上新，每月拍摄', 0, 'RkHost', 'blue'),
  (111, 'Care', NULL, 0, 0, '111,112,113', 0, 'For sites that are up already', 1, 'RkHost', 'green'),
  (112, 'Checks', NULL, 111, 1, '112', 0, 'We look, you decide', 0, 'RkHost', 'green'),
  (113, 'Repairs', NULL, 111, 1, '113', 0, 'Within a working day', 0, 'RkHost', 'green'),
  (114, 'Watching', NULL, 0, 0, '114', 1, 'We see it first', 1, 'RkHost', 'green');

Insert Into Rk_ShopList (Id, ShopName, ItemId, Price, MonPrice, ThMonPrice, HfyPrice, DanWei, shInfo, Info, PicUrl, AgentUser) Values
  (11, '双语展示站', 3, 1980, NULL, NULL, NULL, '个', '中英两种文字，十个工作日', '两种文字各五页，含翻译校对。', '/images/hero.svg', NULL),
  (12, '活动页', 3, 380, NULL, NULL, NULL, '页', '一页讲清一件事', '三天完成，手机上同样好看。', '/images/hero.svg', NULL),
  (13, '商城加会员', 4, 9800, NULL, NULL, NULL, '个', '积分、等级、优惠券', '在标准商城之上加会员系统。', '/images/hero.svg', NULL),
  (14, '防火墙', 2, 600, 60, 165, 320, '站', '挡住常见攻击', '规则每日更新，误拦可申诉。', '/images/logo.svg', NULL),
  (15, '漏洞巡检', 2, 240, NULL, NULL, 130, '站', '每月一次，附报告', '报告写明位置和修补办法。', '/images/logo.svg', NULL),
  (21, '文件备份 10 GB', 6, 120, 12, 33, 63, '份', '网页和图片', '每晚一次，保留三十天。', '/images/logo.svg', NULL),
  (22, '文件备份 100 GB', 6, 480, 45.5, 132, 252, '份', '含附件和视频', '每晚一次，保留三十天。', '/images/logo.svg', NULL),
  (23, '数据库备份 1 GB', 7, 180, 18, 50, 96, '份', '每小时一次', '可恢复到七天内任一时刻。', '/images/logo.svg', NULL),
  (31, '晚间客服', 102, 3600, 320, 930, 1830, '席', '18 点到 24 点', '熟悉您的商品后上岗。', '/images/logo-blue.svg', 'blue'),
  (32, '周末客服', 102, 2400, 220, NULL, NULL, '席', '周六和周日', '每席同时接待五位客人。', '/images/logo-blue.svg', 'blue'),
  (33, '每月十件', 103, 1800, 160, 460, 880, '套', '白底图与场景图', '寄来、拍摄、寄回，七天之内。', '/images/logo-blue.svg', 'blue'),
  (41, 'Speed check', 112, 90, NULL, NULL, NULL, 'site', 'What slows your pages down', 'A report with the ten things to do first.', '/images/logo-green.svg', 'green'),
  (42, 'Security check', 112, 240, NULL, NULL, NULL, 'site', 'What a stranger could reach', 'A report, and a talk about it.', '/images/logo-green.svg', 'green'),
  (43, 'Broken page', 113, 60, NULL, NULL, NULL, 'page', 'Back as it was', 'We find the cause and tell it.', '/images/logo-green.svg', 'green'),
  (44, 'Watch', 114, 132, 12.1, 35, 68, 'site', 'Eyes on your site day and night', 'Paid by period; we call before your visitors do.', '/images/logo-green.svg', 'green');
