<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title
Page_Title = Say("付款方式", "Ways to pay")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<%= Site.Show_PayType(Agent_User) %>
<p><a class="button" href="/pay/enter.asp"><%= Say("我已付款", "I have paid") %></a></p>
</section>
<!--#include virtual="/include/footer.inc"-->
