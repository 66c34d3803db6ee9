<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title
Page_Title = Say("成功案例", "Customers")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<nav aria-label="<%= Say("按类别", "By category") %>"><ul class="boxes"><%= Site.Show_SuccessItem("132", "40", Agent_User) %></ul></nav>
<h2><%= Say("最新上线", "New on our servers") %></h2>
<ul class="boxes newest"><%= Site.Show_SuccessList("8", Say("10", "22"), "220", "40", "· ", Agent_User) %></ul>
<p><a class="button quiet" href="/success/success.asp"><%= Say("全部案例", "All customers") %></a></p>
</section>
<!--#include virtual="/include/footer.inc"-->
