-- Success cases of each storefront, in its own categories; a page shows six of them.
With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < 15)
Insert Into Rk_Success (SiteName, SiteUrl, Info, PicUrl, succlass, AgentUser)
Select Case i % 3 When 0 Then '长风机械' When 1 Then '青禾果园直营店' Else '本地生活指南' End || ' ' || i,
  'http://case' || i || '.example/',
  Case i % 3 When 0 Then '产品手册与询价' When 1 Then '当季水果，次日送达' Else '餐馆、课程和集市' End,
  '/images/case' || (1 + i % 6) || '.svg', Case i % 3 When 0 Then '企业网站' When 1 Then '商城' Else '门户' End, NULL From n;

With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < 7)
Insert Into Rk_Success (SiteName, SiteUrl, Info, PicUrl, succlass, AgentUser)
Select Case i % 2 When 0 Then '木作工作室' Else '街角咖啡' End || ' ' || i, 'http://blue' || i || '.example/',
  Case i % 2 When 0 Then '作品与预约' Else '豆子和器具' End, '/images/case' || (1 + i % 6) || '.svg',
  Case i % 2 When 0 Then '工作室' Else '小店' End, 'blue' From n;

With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < 8)
Insert Into Rk_Success (SiteName, SiteUrl, Info, PicUrl, succlass, AgentUser)
Select Case i % 2 When 0 Then 'Northwind Joinery' Else 'Harbour Tea' End || ' ' || i,
  'http://green' || i || '.example/', Case i % 2 When 0 Then 'Windows and doors' Else 'Leaves from four hills' End,
  '/images/case' || (1 + i % 6) || '.svg', Case i % 2 When 0 Then 'Companies' Else 'Shops' End, 'green' From n;
