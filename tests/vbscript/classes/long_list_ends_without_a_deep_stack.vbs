Class Node
  Public NextNode
End Class
Dim head
Set head = Nothing
For i = 1 To 50000
  Set n = New Node
  Set n.NextNode = head
  Set head = n
Next
Set n = Nothing
Set head = Nothing
Print "gone" ' expect: gone
