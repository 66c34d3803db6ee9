Const c = 1
c = 2 ' error: 501
