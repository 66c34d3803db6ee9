<%
Dim fso, path, stream
Set fso = Server.CreateObject("Scripting.FileSystemObject")
path = Server.MapPath("guests.txt")
Set stream = fso.OpenTextFile(path, 8, True)
stream.WriteLine "Ann|hello"
stream.WriteLine "Bob|<hi>"
stream.Close
Set stream = fso.OpenTextFile(path, 1)
Do Until stream.AtEndOfStream
  parts = Split(stream.ReadLine, "|")
%><dt><%= Server.HTMLEncode(parts(0)) %><dd><%= Server.HTMLEncode(parts(1)) %>
<% Loop
stream.Close
fso.DeleteFile path
Response.Write fso.FileExists(path)
%>
