<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/cart.inc"-->
<%
Dim Page_Title, City
Page_Title = Say("订单已收到", "Your order")
If Session("Order_Name") & "" = "" Then Response.Redirect "/order/index.asp"
City = Site.ReStr(Session("Order_City"))

' A region's Chinese or romanised name, by the storefront's language.
Function Region(code)
    Region = Site.GetCTName(code, Say("0", "1"))
End Function
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<dl class="facts">
<dt><%= Say("姓名", "Name") %></dt><dd><%= Html(Session("Order_Name")) %></dd>
<dt><%= Say("邮箱", "E-mail") %></dt><dd><%= Html(Session("Order_Mail")) %></dd>
<dt><%= Say("方案编号", "Plan") %></dt><dd><%= Html(Session("Order_Plan")) %></dd>
<dt><%= Say("地区", "Region") %></dt><dd><%= Html(Region(Left(City, 2) & "0000")) %> · <%= Html(Region(City)) %></dd>
</dl>
<% If UBound(CartLines()) >= 0 Then ShowCart False %>
</section>
<!--#include virtual="/include/footer.inc"-->
