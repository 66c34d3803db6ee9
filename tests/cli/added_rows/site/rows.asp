<%
' A row that was added stands last in its record set, whatever the Select finds and in which order.
Set c = Server.CreateObject("ADODB.Connection")
c.Open "Data Source=data/added.db;Mode=Create"
c.Execute "Create Table News (Id Counter Primary Key, Title Text(20))"
c.Execute "Insert Into News (Title) Values ('first')"
c.Execute "Insert Into News (Title) Values ('second')"

Function Fresh(sql, cursor)
  Set Fresh = Server.CreateObject("ADODB.Recordset")
  Fresh.Open sql, c, cursor, 3
End Function

Sub Add(rs, title)
  rs.AddNew
  rs("Title") = title
  rs.Update
End Sub

Sub Say(how, rs)
  Response.Write how & ": " & rs("Title") & ", " & rs.RecordCount & " rows" & vbLf
  If rs("Title") = "new" Then rs.Delete
  rs.Close
End Sub

selects = Array("Select * From News", "Select Top 1 * From News", "Select * From News Where 1=0", _
  "Select * From News Order By Id Desc")
For Each sql In selects
  Response.Write sql & vbLf
  For cursor = 1 To 3
    Set rs = Fresh(sql, cursor): Add rs, "new": rs.MoveLast: Say "MoveLast", rs
  Next
  Set rs = Fresh(sql, 1): Add rs, "new": rs.MoveFirst: Say "MoveFirst", rs
  c.Execute "Delete From News Where Title='new'"
  Set rs = Fresh(sql, 1): Add rs, "new": rs.Move 0: Say "Move 0", rs
  Set rs = Fresh(sql, 1): Add rs, "new": rs.Bookmark = rs.Bookmark: Say "Bookmark", rs
  Set rs = Fresh(sql, 1): Add rs, "new": n = rs.AbsolutePosition: Say "At " & n, rs
  Set rs = Fresh(sql, 1): Add rs, "one": Add rs, "new": rs.MovePrevious: Say "MovePrevious", rs
  c.Execute "Delete From News Where Title='new' Or Title='one'"
  Set rs = Fresh(sql, 1): Add rs, "one": Add rs, "two": all = ""
  rs.MoveFirst
  Do Until rs.EOF: all = all & rs("Title") & " ": rs.MoveNext: Loop
  rs.MoveLast: rs.Delete: rs.MovePrevious
  Response.Write all & "- two = " & rs.RecordCount & vbLf
  rs.Close
  c.Execute "Delete From News Where Title='one'"
Next
c.Close
%>
