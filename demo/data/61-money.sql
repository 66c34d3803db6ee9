-- The last movements of four customers: what was bought, and what each had left after it.
Insert Into MoneyLog (user, type, money, buymoney, logmoney, info, now) Values
  ('coffee', '充值', 200, 0, 200, '银行转账', '2026-11-17 14:20:00'),
  ('coffee', '消费', -66, 66, 134, '入门 1 号 一年', '2026-11-17 14:25:12'),
  ('chunfeng', '充值', 500, 0, 500, '银行转账', '2026-11-18 09:12:00'),
  ('chunfeng', '消费', -98, 98, 402, '经济型 A2 一年', '2026-11-18 09:20:31'),
  ('lighthouse', '充值', 1200, 0, 1200, '汇款', '2026-11-19 16:03:44'),
  ('lighthouse', '消费', -668, 668, 532, 'SQL 2000 型 一年', '2026-11-20 10:41:09'),
  ('harbour', '充值', 300, 0, 300, 'Bank transfer', '2026-11-19 12:00:00'),
  ('harbour', '消费', -75, 75, 225, 'Seed 1, one year', '2026-11-19 12:04:10');
