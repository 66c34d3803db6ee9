<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/cart.inc"-->
<%
' The cart: an article's page adds to it with Id, BuyNo, BuyYear and BuyType, this page's own form
' changes it.
Dim Page_Title, Total
Page_Title = Say("购物车", "Cart")
If Request.ServerVariables("REQUEST_METHOD") = "POST" Then
    GuardForm
    ChangeCart
    Response.Redirect "/order/cart.asp"
ElseIf Request.QueryString("Id") <> "" Then
    AddAsked
    Response.Redirect "/order/cart.asp"
End If

Function NumberAsked(name, otherwise, most)
    Dim digits
    Set digits = New RegExp
    digits.Pattern = "^[0-9]{1,9}$"
    NumberAsked = otherwise
    If digits.Test(Request(name) & "") Then NumberAsked = Least(CLng(Request(name)), most)
End Function

Sub AddAsked()
    Dim database, id, unit, name, price
    id = NumberAsked("Id", 0, 999999999)
    unit = Request.QueryString("BuyType") & ""
    Set database = OpenDatabase()
    If FindArticle(database, id, unit, name, price) And NumberAsked("BuyNo", 1, 999) > 0 And NumberAsked("BuyYear", 1, 99) > 0 Then
        AddToCart id, NumberAsked("BuyNo", 1, 999), NumberAsked("BuyYear", 1, 99), unit
    End If
    database.Close
End Sub

' From the last line to the first: a line that goes moves those behind it.
Sub ChangeCart()
    Dim i
    For i = UBound(CartLines()) To 0 Step -1
        SetCartCount i, NumberAsked("count" & i, 0, 999)
    Next
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% If UBound(CartLines()) < 0 Then %>
<p class="note"><%= Say("购物车是空的。", "The cart is empty.") %> <a href="/shop/index.asp"><%= Say("去商城看看", "To the shop") %></a></p>
<% Else %>
<form method="post" action="/order/cart.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<% Total = ShowCart(True) %>
<p class="actions"><button class="button quiet"><%= Say("更新数量", "Change") %></button>
<a class="button" href="/order/index.asp"><%= Say("去下单", "Order") %></a>
<a class="button quiet" href="/shop/index.asp"><%= Say("继续挑选", "More from the shop") %></a></p>
</form>
<% End If %>
</section>
<!--#include virtual="/include/footer.inc"-->
