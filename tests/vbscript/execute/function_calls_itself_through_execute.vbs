Function Down(n)
  Print n ' expect: 2
  ' expect: 1
  If n > 1 Then Execute "Down n - 1"
End Function
Down 2
