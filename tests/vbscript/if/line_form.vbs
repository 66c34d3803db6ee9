If 1 = 1 Then Print "yes" Else Print "no" ' expect: yes
If 1 = 2 Then Print "no" Else Print "else" ' expect: else
