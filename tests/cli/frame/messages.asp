<%
On Error Resume Next
Set Site = Server.CreateObject("Rkclient.SiteMain")
Select Case Request.QueryString("step")
Case "stay": Site.MessBox "hello", "local", 0
Case "back": Site.MessBox "hello", "", 1
Case "go": Site.MessBox "hello", "/index.asp", "1"
Case "show": Site.ShowMsg "over"
Case "guard": Site.checkpost
End Select
Response.Write " and on, error " & Err.Number
%>
