<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<%
Dim Page_Title, Domain, Answer
Page_Title = Say("域名查询", "Domain check")
Domain = LCase(Given("domain"))
' What is no name is not asked for: the address is built from it as it stands.
If InStr(Domain, "&") > 0 Or InStr(Domain, "#") > 0 Then Domain = ""

Sub ShowAnswer(text)
    Select Case Left(text, 3)
    Case "210" : Outcome "good", "<strong>" & Html(Domain) & "</strong> " & Say("可以注册。", "is free.")
    Case "211" : Outcome "bad", "<strong>" & Html(Domain) & "</strong> " & Say("已被注册。", "is taken.")
    Case "213" : Outcome "bad", "<strong>" & Html(Domain) & "</strong> " & Say("不是域名。", "is no domain name.")
    Case Else : Outcome "bad", Say("注册商没有回答，请稍后再试。", "The registrar gave no answer: please try later.")
    End Select
End Sub

Sub Check()
    On Error Resume Next
    Answer = Host.chDomainReg(Domain)
    If Err.Number <> 0 Then
        Outcome "bad", NotSet()
    Else
        ShowAnswer Answer
    End If
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<form class="tool" method="get" action="/services/domain.asp">
<% Field "domain", Say("域名", "Domain"), Domain, Say("例如 my-shop.example；shanhai.example 已被注册。", "Such as my-shop.example; shanhai.example is taken.") %>
<% Send Say("查询", "Check") %>
</form>
<% If Domain <> "" Then Check %>
</section>
<!--#include virtual="/include/footer.inc"-->
