Dim x
x = CInt(-32768)
Print -x, TypeName(-x) ' expect: 32768 Long
