Class Point
  Public X, Y
  Public Function Sum
    Sum = X + Y
  End Function
End Class
Set p = New Point
p.X = 3
p.Y = 4
Print p.Sum ' expect: 7
