ExecuteGlobal "Function q1 : n = n + 1 : q1 = n : End Function"
n = 8
Print q1 ' expect: 9
y = q1 + 1
Print y ' expect: 11
