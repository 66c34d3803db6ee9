<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
Dim Page_Title
Page_Title = Say("全部产品", "All products")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<p class="jump"><label><span><%= Say("直接去一个产品", "Straight to a product") %></span>
<%= Site.ShowPro_List(Agent_User) %></label></p>
</section>
<section class="wrap">
<h2><%= Say("虚拟主机", "Hosting plans") %></h2>
<%= ClassLinks("/host", "/host/index.asp", "none") %>
</section>
<section class="wrap">
<h2><%= Say("数据库", "Databases") %></h2>
<%= ClassLinks("/database", "/database/index.asp", "none") %>
</section>
<section class="wrap">
<h2><%= Say("企业邮局", "Mail for companies") %></h2>
<%= ClassLinks("/mail/mail.asp", "/mail/mail.asp", "none") %>
</section>
<!--#include virtual="/include/footer.inc"-->
