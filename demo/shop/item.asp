<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title, Article
Article = Site.Show_ShopInfo()
If Article = "" Then Response.Status = "404 Not Found"
' The name is the article's own HTML already.
Page_Title = Say("商品", "Article")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<% If Article = "" Then %>
<h1><%= Page_Title %></h1>
<p class="note"><%= Say("没有这件商品。", "There is no such article.") %></p>
<% Else %>
<%= Article %>
<script src="/js/shop-item.js" defer></script>
<% End If %>
<p><a href="/shop/index.asp"><%= Say("返回商城", "Back to the shop") %></a></p>
</section>
<!--#include virtual="/include/footer.inc"-->
