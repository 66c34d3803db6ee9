-- The master site and its agents. A browser's Host carries the port; each domain stands here with
-- it and without it. The master's domains must not hold an agent's as a part.
Insert Into Rk_Template (Id, templatePath, UseThis) Values
  (1, 'today', 1),
  (2, 'classic', 0),
  (3, 'leaf', 0);

Insert Into SysTem (SiteDomain, succlass) Values
  ('localhost:8080,localhost,127.0.0.1:8080,127.0.0.1', '企业网站|商城|门户');

Insert Into Rk_AgentSet (AgentUser, AgentDomain, template, succlass) Values
  ('blue', 'blue.localhost:8080,blue.localhost', 2, '小店|工作室'),
  ('green', 'green.localhost:8080,green.localhost', 3, 'Companies|Shops');
