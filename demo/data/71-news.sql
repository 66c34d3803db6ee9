-- News and help of each storefront, the newest of today; a news page shows twenty of them.
With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < 43)
Insert Into Rk_News (Type, Title, Time, AgentUser, EveryOne)
Select Case When i % 3 = 0 Then 'help' Else 'news' End,
  Case i % 6 When 1 Then '机房巡检通报' When 2 Then '新方案上架' When 3 Then '备份与恢复问答'
    When 4 Then '节假日值班安排' When 5 Then '控制面板更新说明' Else '域名解析问答' End
  || '（第 ' || i || ' 期）', date('2025-11-01', '+' || (i * 7) || ' days'), NULL, 0 From n;

With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < 23)
Insert Into Rk_News (Type, Title, Time, AgentUser, EveryOne)
Select Case When i % 4 = 0 Then 'help' Else 'news' End,
  Case When i % 4 = 0 Then '开店问答' Else '小店周记' End || '（第 ' || i || ' 期）',
  date('2026-05-01', '+' || (i * 8) || ' days'), 'blue', 0 From n;

With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < 22)
Insert Into Rk_News (Type, Title, Time, AgentUser, EveryOne)
Select Case When i % 4 = 0 Then 'help' Else 'news' End,
  Case When i % 4 = 0 Then 'Questions and answers' Else 'Letter from the server room' End || ' no. ' || i,
  date('2026-05-01', '+' || (i * 8) || ' days'), 'green', 0 From n;

Insert Into Rk_News (Type, Title, Time, AgentUser, EveryOne) Values
  ('news', '今日公告：商城上线', date('now', 'localtime'), NULL, 0),
  ('news', '今日公告：小店服务开售', date('now', 'localtime'), 'blue', 0),
  ('news', 'Today: the shop is open', date('now', 'localtime'), 'green', 0);
