<%@ CodePage="65001" %><%
Set Site = Server.CreateObject("Rkclient.SiteMain")
Response.Write Site.GetCTSelect("440100", Request.QueryString("type"), Request.QueryString("index")) & "|"
Response.Write Site.GetCTName(Request.QueryString("code"), "0")
%>
