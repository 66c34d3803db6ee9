<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<%
Dim Page_Title, Words
Page_Title = Say("网址编码", "Addresses in UTF-8")
Words = Given("words")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<form class="tool" method="get" action="/services/address.asp">
<% Field "words", Say("文字或网址", "Words or an address"), Words, Say("例如 http://www.shop.example/新品", "Such as http://www.shop.example/新品") %>
<% Send Say("编码", "Encode") %>
</form>
<% If Words <> "" Then Outcome "good", Html(Host.URLEncodetoUTF8(Words)) %>
</section>
<!--#include virtual="/include/footer.inc"-->
