Sub S(a, b)
End Sub
S 1 ' error: 450
