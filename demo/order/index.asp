<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/cart.inc"-->
<%
Dim Page_Title, Plan, Province
Page_Title = Say("在线订购", "Order")
Plan = Left(Request.QueryString("plan") & "", 8)
Province = "440000"
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<% If UBound(CartLines()) >= 0 Then
    ShowCart False %>
<p><a href="/order/cart.asp"><%= Say("修改购物车", "Change the cart") %></a></p>
<% End If %>
<form class="form" method="post" action="/order/save.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<p><label for="name"><%= Say("姓名", "Name") %></label>
<input id="name" name="name" maxlength="40" autocomplete="name"></p>
<p><label for="mail"><%= Say("邮箱", "E-mail") %></label>
<input id="mail" name="mail" type="email" maxlength="80" autocomplete="email"></p>
<p><label for="plan"><%= Say("方案编号", "Plan") %></label>
<input id="plan" name="plan" maxlength="8" value="<%= Html(Plan) %>"></p>
<p><label for="province"><%= Say("省份", "Province") %></label>
<select id="province" name="province" data-cities="city" data-from="/order/cities.asp"><%= Site.GetCTSelect(Province, "pro", "") %></select></p>
<p><label for="city"><%= Say("城市", "City") %></label>
<select id="city" name="city"><%= Site.GetCTSelect("", "ct", Left(Province, 2)) %></select></p>
<p class="send"><button class="button" type="submit"><%= Say("提交订单", "Send the order") %></button></p>
</form>
<script src="/js/regions.js" defer></script>
</section>
<!--#include virtual="/include/footer.inc"-->
