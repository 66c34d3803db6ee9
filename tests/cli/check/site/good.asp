<!--#include file="include/objects.inc"-->
<%
Response.Write Site.Show_HostList("Card", 1, 0, "", "", "", "", 20, "")
Set rows = Server.CreateObject("ADODB.Recordset")
rows.CursorLocation = 3
Set maybe = rows.Fields("x").Value
maybe.AnythingAtAll
%>
