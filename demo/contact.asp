<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title, Plan
Page_Title = Say("联系我们", "Contact")
' A plan's number behind the letter of its list: H12, S1, M3, E2. Anything else is left out.
Plan = UCase(Request.QueryString("plan") & "")
If InStr("HSME", Left(Plan, 1)) = 0 Or Not IsNumeric(Mid(Plan, 2)) Then Plan = ""
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<% If Plan <> "" Then %>
<p class="note"><a class="button small" href="/order/index.asp?plan=<%= Html(Plan) %>"><%= Say("在线订购", "Order online") %></a> <%= Say("您选的是方案 ", "You picked plan ") %><strong><%= Html(Plan) %></strong><%= Say("，联系时请告诉我们这个编号。", ": please tell us this number.") %></p>
<% End If %>
<dl class="facts">
<dt><%= Say("电话", "Telephone") %></dt><dd><a href="tel:+8602055500100">+86 20 5550 0100</a></dd>
<dt><%= Say("邮件", "E-mail") %></dt><dd><%= Html(Setting("service", "sales@shop.example")) %></dd>
<dt><%= Say("时间", "Hours") %></dt><dd><%= Html(Setting("hours", Say("每天 9:00 至 21:00", "Every day, 9:00 to 21:00 (UTC+8)"))) %></dd>
</dl>
</section>
<!--#include virtual="/include/footer.inc"-->
