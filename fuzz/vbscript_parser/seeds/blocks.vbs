Class C
  Public Default Property Get Item(ByVal i): Item = i: End Property
  Private a(3), b
End Class
With New C
  Select Case .Item(1)
    Case 1, 2: For Each v In Array(1, , 3): Next
    Case Else: Do Until True: Exit Do: Loop
  End Select
End With
f (1) * 2, 3
