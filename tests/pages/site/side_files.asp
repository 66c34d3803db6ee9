<%
On Error Resume Next
Set fso = Server.CreateObject("Scripting.FileSystemObject")
base = Server.MapPath("data/guests.db")
fso.CreateTextFile(base).Write "x"
For Each ending In Array("-wal", "-SHM", "-journal")
  Response.Write fso.FileExists(base & ending)
  fso.CreateTextFile base & ending
  Response.Write " " & Err.Number
  Err.Clear
  fso.CopyFile base, base & ending
  Response.Write " " & Err.Number
  Err.Clear
  Set stream = Server.CreateObject("ADODB.Stream")
  stream.Open
  stream.SaveToFile base & ending, 2
  Response.Write " " & Err.Number & vbCrLf
  Err.Clear
Next
For Each file In fso.GetFolder(Server.MapPath("data")).Files
  Response.Write file.Name & " " & file.Type & vbCrLf
Next
%>
