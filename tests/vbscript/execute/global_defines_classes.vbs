ExecuteGlobal "Class C : Public N : End Class"
Set c1 = New C
c1.N = 3
Print c1.N ' expect: 3
