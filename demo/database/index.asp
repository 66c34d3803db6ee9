<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
Dim Page_Title, Class_Id
Page_Title = Say("数据库", "Databases")
Class_Id = ClassOfRequest("/database/index.asp")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<%= ClassLinks("/database", "/database/index.asp", Class_Id) %>
<h2>SQL Server</h2>
<%= Site.Show_SqlList("", "0", "3", "</div><div class=""row"">", "Price", "26", "24", Agent_User) %>
</section>
<section class="wrap">
<h2>MySQL</h2>
<%= Site.Show_MySqlList("", "0", "3", "</div><div class=""row"">", "Price", "26", "24", Agent_User) %>
</section>
<!--#include virtual="/include/footer.inc"-->
