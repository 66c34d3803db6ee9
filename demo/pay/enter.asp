<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title, Reported, Name, Plain
Page_Title = Say("付款登记", "Report a payment")
Reported = False
If Request.Form("PayId") <> "" Then
    Reported = True
    ' The template puts the name into the form as it stands, so only plain names are remembered.
    Set Plain = New RegExp
    Plain.Pattern = "^[0-9A-Za-z_\-]{1,20}$"
    Name = Request.Form("UserName") & ""
    If Plain.Test(Name) Then Session("UserName") = Name
End If
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<% If Reported Then %>
<p class="note" role="status"><%= Say("已收到您的登记，核对后会通知您。这是演示，什么也没有保存。", "Thank you, we will look for it and tell you. This is a demo: nothing was stored.") %></p>
<% End If %>
<%= Site.Show_EnterPay(Agent_User) %>
</section>
<!--#include virtual="/include/footer.inc"-->
