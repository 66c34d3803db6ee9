MsgBox "x" ' error: 70
