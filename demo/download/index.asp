<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title
Page_Title = Say("下载", "Downloads")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow downloads">
<h1><%= Page_Title %></h1>
<%= Site.Show_DownLoad(50, 300, 40, Agent_User) %>
</section>
<!--#include virtual="/include/footer.inc"-->
