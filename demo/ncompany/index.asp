<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
' One company of the strip, which only the master site has.
Dim Page_Title, City, Telephone
Page_Title = Say("服务点", "Office")
ReadCompany NumberOfRequest("Id")
If City = "" Then
    Response.Status = "404 Not Found"
    Site.ShowMsg Say("没有这个服务点。", "There is no such office.")
End If
Page_Title = City & Page_Title

Sub ReadCompany(id)
    Dim database, rows
    City = ""
    If id = "" Or Agent_User <> "" Then Exit Sub
    Set database = OpenDatabase()
    Set rows = database.Execute("Select [City],[Tel] From [Rk_NCompany] Where [Id]=" & id)
    If Not rows.EOF Then
        City = rows("City") & "" : Telephone = rows("Tel") & ""
    End If
    rows.Close
    database.Close
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Html(Page_Title) %></h1>
<dl class="facts">
<dt><%= Say("城市", "City") %></dt><dd><%= Html(City) %></dd>
<dt><%= Say("电话", "Telephone") %></dt><dd><a href="tel:<%= Html(Replace(Replace(Telephone, " ", ""), "-", "")) %>"><%= Html(Telephone) %></a></dd>
<dt><%= Say("时间", "Hours") %></dt><dd><%= Html(Setting("hours", Say("每天 9:00 至 21:00", "Every day, 9:00 to 21:00 (UTC+8)"))) %></dd>
</dl>
<p><a href="/links/index.asp?id=2"><%= Say("全部服务点", "All offices") %></a></p>
</section>
<!--#include virtual="/include/footer.inc"-->
