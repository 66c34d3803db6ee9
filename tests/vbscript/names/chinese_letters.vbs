Dim 价格
价格 = 5
Print 价格 * 2 ' expect: 10
