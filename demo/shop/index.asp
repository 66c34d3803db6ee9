<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
Dim Page_Title, Goods
Page_Title = Say("商城", "Shop")
' A mistyped category goes back to the whole shop.
If Request.QueryString("Id") <> "" And NumberOfRequest("Id") = "" Then Response.Redirect "/shop/index.asp"
Goods = Site.Show_ShopList("", "0", "0", "3", "</div><div class=""row"">", "Id", "Id", "26", "20", "1", Agent_User)
%>
<!--#include virtual="/include/header.inc"-->
<noscript><style>.panel { display: block !important }</style></noscript>
<section class="wrap">
<h1><%= Page_Title %></h1>
<% If Goods = "" Then %>
<p class="note"><%= Say("没有这个类别。", "There is no such category.") %> <a href="/shop/index.asp"><%= Say("全部商品", "The whole shop") %></a></p>
<% End If %>
<%= Goods %>
</section>
<script src="/js/tabs.js" defer></script>
<!--#include virtual="/include/footer.inc"-->
