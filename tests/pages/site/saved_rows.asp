<%
Set rs = Server.CreateObject("ADODB.Recordset")
rs.Fields.Append "Id", 3
rs.Fields.Append "Name", 202, 20
rs.Open
For i = 1 To 2
  rs.AddNew
  rs("Id") = i
  rs("Name") = "n<" & i
  rs.Update
Next
rs.Save Server.MapPath("data/rows.xml"), 1
On Error Resume Next
rs.Save Server.MapPath("data/rows.xml"), 1
Response.Write Err.Number & vbCrLf
Err.Clear
rs.Save Server.MapPath("data/guests.db-wal"), 1
Response.Write Err.Number & vbCrLf
On Error GoTo 0
Set back = Server.CreateObject("ADODB.Recordset")
back.Open Server.MapPath("data/rows.xml")
back.Filter = "Id = 2"
Response.Write back("Name") & " " & TypeName(back("Id").Value) & vbCrLf
back.Save Response, 1
%>
