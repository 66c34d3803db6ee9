<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<%
Dim Page_Title, Number, Domain
Page_Title = Say("备案查询", "Filing lookup")
Number = Given("number")
Domain = LCase(Given("domain"))

Sub LookUp()
    Dim found
    On Error Resume Next
    found = Site.Getbeian(Number, Domain)
    If Err.Number <> 0 Then
        Outcome "bad", NotSet()
        Exit Sub
    End If
    Select Case found
    Case "0" : Outcome "bad", Say("备案库中没有这个备案号。", "This number is not on record.")
    Case "1" : Outcome "good", Say("备案号有效，与域名相符。", "On record, and for this domain.")
    Case Else : Outcome "bad", Say("备案号与域名不符，或备案系统没有回答。", "On record for another domain, or the service gave no answer.")
    End Select
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<form class="tool" method="get" action="/services/filing.asp">
<% Field "number", Say("备案号", "Filing number"), Number, Say("例如 粤ICP备20210001号", "Such as 粤ICP备20210001号") %>
<% Field "domain", Say("域名", "Domain"), Domain, Say("例如 shanhai.example", "Such as shanhai.example") %>
<% Send Say("查询", "Look up") %>
</form>
<% If Number <> "" Then LookUp %>
</section>
<!--#include virtual="/include/footer.inc"-->
