<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/money.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<%
Dim Page_Title, Customer, Told, Told_Kind
RequireCustomer
Page_Title = Say("我的账户", "My account")
Customer = Session("Account")
Told = ""
If Request.ServerVariables("REQUEST_METHOD") = "POST" Then ChangePassword

Sub ChangePassword()
    GuardForm
    Told_Kind = "bad"
    If Not PasswordFits(Customer, Request.Form("old") & "") Then
        Told = Say("原密码不对。", "The old password is wrong.")
    ElseIf Len(Request.Form("fresh") & "") < 8 Then
        Told = Say("新密码至少八个字符。", "The new password needs eight characters or more.")
    Else
        SetPassword Customer, Request.Form("fresh") & ""
        Told_Kind = "good"
        Told = Say("密码已修改。", "The password was changed.")
    End If
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% If Told <> "" Then Outcome Told_Kind, Told %>
<dl class="facts">
<dt><%= Say("用户名", "Name") %></dt><dd><%= Html(Customer) %> · <%= Html(Accounts.GetIniKey(Customer, "name")) %></dd>
<dt><%= Say("余额（元）", "Balance (CNY)") %></dt><dd><strong><%= FormatNumber(BalanceOf(Customer), 2) %></strong></dd>
<% If Session("Order_Plan") & "" <> "" Then %>
<dt><%= Say("本次订单", "This visit's order") %></dt><dd><a href="/order/done.asp"><%= Html(Session("Order_Plan")) %></a></dd>
<% End If %>
</dl>
<p class="actions"><a class="button" href="/pay/enter.asp"><%= Say("付款登记", "Report a payment") %></a>
<% If Session("Account_Role") = "owner" Then %><a class="button quiet" href="/owner/index.asp"><%= Say("店主", "Owner") %></a><% End If %>
<a class="button quiet" href="/user/login.asp?leave=1"><%= Say("退出", "Sign out") %></a></p>
</section>
<section class="wrap">
<h2><%= Say("我的账目", "My movements") %></h2>
<% MovementsTable Customer %>
</section>
<section class="wrap">
<h2><%= Say("修改密码", "Change the password") %></h2>
<form class="tool" method="post" action="/user/index.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<p class="field"><label for="old"><%= Say("原密码", "Old password") %></label>
<input id="old" name="old" type="password" maxlength="60" autocomplete="current-password"></p>
<p class="field"><label for="fresh"><%= Say("新密码", "New password") %></label>
<input id="fresh" name="fresh" type="password" minlength="8" maxlength="60" autocomplete="new-password"></p>
<% Send Say("修改", "Change") %>
</form>
</section>
<!--#include virtual="/include/footer.inc"-->
