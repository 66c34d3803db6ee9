<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<!--#include virtual="/include/owner.inc"-->
<%
' Where the registrars' interfaces are, a look at a page elsewhere, and the mark of a mail account.
Dim Page_Title, Address, Account
RequireOwner
Page_Title = Say("接口", "Interfaces")
Address = Given("address")
Account = Given("account")

' Up to the "?": what stands behind it is new in every call.
Function InterfaceAddress(key)
    On Error Resume Next
    InterfaceAddress = Split(Site.getapiurl(key) & "?", "?")(0)
    If Err.Number <> 0 Then InterfaceAddress = NotSet()
End Function

Sub InterfaceEntry(key, words)
    Response.Write "<dt>" & words & "</dt><dd>" & Html(InterfaceAddress(key)) & "</dd>" & vbCrLf
End Sub

Sub LookAt()
    Dim page, title
    page = Site.GetURL(Address)
    If page = "0119" Then
        Outcome "bad", Say("没有回答。", "No answer.")
        Exit Sub
    End If
    title = Host.GetKey(page, "<title>", "</title>")
    Outcome "good", Say("标题：", "Title: ") & Html(Left(title, 120)) & Say("；长度 ", "; length ") & Len(page)
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% OwnerMenu %>
<dl class="facts interfaces">
<% InterfaceEntry "netcn", Say("注册（一）", "Register (one)")
InterfaceEntry "xinnetreg", Say("注册（二）", "Register (two)")
InterfaceEntry "xinnetgetkey", Say("取密钥", "Fetch a key")
InterfaceEntry "xinnetDomainRenew", Say("续费", "Renew")
InterfaceEntry "xinnetchangekey", Say("换密钥", "Change a key") %>
</dl>
<h2><%= Say("看看客户的网页", "Look at a customer's page") %></h2>
<form class="tool" method="post" action="/owner/interfaces.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<% Field "address", Say("网址", "Address"), Address, Say("页面由服务器读取，按 GB2312 解码。", "Read by the server, as GB2312.") %>
<% Send Say("读取", "Fetch") %>
</form>
<% If IsPosted() And Left(LCase(Address), 4) = "http" Then LookAt %>
<h2><%= Say("邮箱口令标记", "Mark of a mail password") %></h2>
<form class="tool" method="post" action="/owner/interfaces.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<% Field "account", Say("口令", "Password"), "", Say("邮局命令所带的标记，对任何口令都相同。", "What mail commands carry; the same for every password.") %>
<% Send Say("计算", "Compute") %>
</form>
<% If Account <> "" Then Outcome "good", Html(Host.mailpass(Account)) %>
</section>
<!--#include virtual="/include/footer.inc"-->
