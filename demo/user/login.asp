<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<%
Dim Page_Title, Refused
Page_Title = Say("登录", "Sign in")
If Request.QueryString("leave") = "1" Then SignOut
Refused = ""
If Request.ServerVariables("REQUEST_METHOD") = "POST" Then TrySignIn

' The demo's customer of this storefront; none on an agent's that was added later.
Function DemoCustomer()
    Select Case Agent_User
    Case "" : DemoCustomer = "chunfeng"
    Case "blue" : DemoCustomer = "coffee"
    Case "green" : DemoCustomer = "harbour"
    Case Else : DemoCustomer = ""
    End Select
End Function

Sub TrySignIn()
    Dim name, password
    GuardForm
    name = Given("account")
    password = Request.Form("password") & ""
    If Not PasswordFits(name, password) Then
        Refused = Say("用户名或密码不对。", "The name or the password is wrong.")
    ElseIf password = "owner" And Not IsLocalVisitor() Then
        Refused = Say("请先在服务器本机上修改店主密码。", "Change the owner's password on the server itself first.")
    Else
        SignIn name
        If Session("Account_Role") = "owner" Then Response.Redirect "/owner/index.asp"
        Response.Redirect "/user/index.asp"
    End If
    Host.writelog "[" & Brand & "] sign-in refused, " & Request.ServerVariables("REMOTE_ADDR")
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<% If Refused <> "" Then Outcome "bad", Refused %>
<form class="tool" method="post" action="/user/login.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<p class="field"><label for="account"><%= Say("用户名", "Name") %></label>
<input id="account" name="account" maxlength="20" autocomplete="username" value="<%= Html(Given("account")) %>"></p>
<p class="field"><label for="password"><%= Say("密码", "Password") %></label>
<input id="password" name="password" type="password" maxlength="60" autocomplete="current-password"></p>
<% Send Say("登录", "Sign in") %>
</form>
<% If DemoCustomer() <> "" Then %>
<p class="note"><%= Say("演示账户：客户 " & DemoCustomer() & "，密码 demo；店主 owner，密码 owner（仅限本机）。", "Demo accounts: customer " & DemoCustomer() & ", password demo; owner, password owner (on this computer only).") %></p>
<% End If %>
</section>
<!--#include virtual="/include/footer.inc"-->
