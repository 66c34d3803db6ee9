Sub Fill(a)
  a = 4
End Sub
Fill out
Print out ' expect: 4
Sub S
  Fill mine
  Print mine ' expect: 4
End Sub
S
