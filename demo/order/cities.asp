<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit
' The options of a province's cities, for the form's script: ?province=44
Dim Site, Province
Set Site = Server.CreateObject("Rkclient.SiteMain")
Province = Site.ReStr(Request.QueryString("province") & "")
If Len(Province) = 2 And IsNumeric(Province) Then Response.Write Site.GetCTSelect("", "ct", Province)
%>
