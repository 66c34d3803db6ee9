<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title, Page_Section
Page_Title = Say("企业邮局", "Mail for companies")
Page_Section = "mail"
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<%= Site.Show_MailList("", "0", "3", "</div><div class=""row"">", "Price", "26", "24", Agent_User) %>
</section>
<!--#include virtual="/include/footer.inc"-->
