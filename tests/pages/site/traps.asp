<%
On Error Resume Next
Set mail = Server.CreateObject("Some.MailSender")
If Err.Number <> 0 Then Response.Write "no mail: " & Hex(Err.Number) & vbCrLf
Err.Clear
Set rs = Server.CreateObject("ADODB.Recordset")
x = rs("Name")
Response.Write Err.Number & " " & Err.Description & vbCrLf
Err.Clear
Response.Write Application("nothing") & Request("nothing") & "[" & Err.Number & "]"
%>
