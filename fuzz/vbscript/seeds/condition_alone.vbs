If "abc" Then Print "x" ' error: 13
