Dim Name
Name = "global"
Class C
  Public Name
  Function Read
    Read = Name
  End Function
End Class
Set c1 = New C
c1.Name = "member"
Print c1.Read ' expect: member
