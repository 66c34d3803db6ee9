<%@ CodePage="65001" %><%
' Records the movement of the form. Whoever waits for this page to begin asks /begun.asp.
Application("begun") = True
Set Site = Server.CreateObject("Rkclient.SiteMain")
Site.WriteMoneyLog Request.Form("user"), Request.Form("type"), CCur(Request.Form("money")), _
    CCur(Request.Form("buymoney")), CCur(Request.Form("logmoney")), Request.Form("info")
Response.Write "stored"
%>
