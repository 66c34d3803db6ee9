-- Ways to pay: instructions of several lines, and the agents' own.
Update Pay Set PayInfo = '户名：山海主机（演示）' || char(13, 10) || '账号：0000 1111 2222' || char(13, 10) || '开户行：演示银行' Where Id = 1;
Insert Into Pay (AgentUser, PayType, PayIco, PayInfo) Values
  ('green', 'Bank transfer', '/images/sign-bank.svg', 'Holder: Greenleaf Hosting (demo)' || char(13, 10) || 'Account: 0000 3333 4444'),
  ('green', 'Cheque', '/images/sign-cheque.svg', 'Write your user name on the back');
