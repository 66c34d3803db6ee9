If "True" Then Print "t" ' expect: t
If "1" Then Print "one" ' expect: one
If "False" Then Print "f"
