Sub S
End Sub
S 1 ' error: 450
