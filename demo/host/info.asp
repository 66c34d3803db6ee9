<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title, Plan
Page_Title = Say("主机方案", "Hosting plan")
Plan = Site.Show_HostInfo(Agent_User) & ""
If Plan = "" Then Response.Status = "404 Not Found"
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<% If Plan = "" Then %>
<h1><%= Say("没有这个方案", "No such plan") %></h1>
<p><%= Say("它可能已经下架，或者网址有误。", "It may have been taken off sale, or the address is mistyped.") %></p>
<% Else %>
<%= Plan %>
<% End If %>
<p><a href="/host/index.asp"><%= Say("查看全部主机", "All hosting plans") %></a></p>
</section>
<!--#include virtual="/include/footer.inc"-->
