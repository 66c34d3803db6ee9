<!--#include file="include/objects.inc"-->
<%
Set mail = Server.CreateObject("Maker.Mailer")
Response.Wrote "text"
Response.Write Site.Show_Hostlists("")

Response.Write Site.Show_MailList("Row", 1, 0, "", "", "", "", "")
Set rows = Server.CreateObject("ADODB.Recordset")
Response.Write rows.EndOfFile
%>
