<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title, Page_Section
Page_Title = Say("数据库", "Databases")
Page_Section = "database"
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<h2>SQL Server</h2>
<%= Site.Show_SqlList("", "0", "3", "</div><div class=""row"">", "Price", "26", "24", Agent_User) %>
</section>
<section class="wrap">
<h2>MySQL</h2>
<%= Site.Show_MySqlList("", "0", "3", "</div><div class=""row"">", "Price", "26", "24", Agent_User) %>
</section>
<!--#include virtual="/include/footer.inc"-->
