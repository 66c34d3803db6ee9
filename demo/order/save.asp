<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/guard.inc"-->
<%
Dim Name, Mail, City
GuardForm
Name = Trim(Request.Form("name") & "")
Mail = Trim(Request.Form("mail") & "")
City = Request.Form("city") & ""
If Name = "" Then Refuse Say("请填写姓名。", "Please tell us your name.")
If InStr(Mail, "@") < 2 Then Refuse Say("请填写邮箱。", "Please tell us your e-mail address.")
If Len(City) <> 6 Or Left(City, 2) <> Left(Request.Form("province") & "", 2) Then
    Refuse Say("所选城市不在所选省份内。", "The city is not in the province.")
End If
Session("Order_Name") = Left(Name, 40)
Session("Order_Mail") = Left(Mail, 80)
Session("Order_Plan") = Left(Request.Form("plan") & "", 8)
Session("Order_City") = City
Site.MessBox Say("订单已收到，谢谢！", "We have your order. Thank you!"), "/order/done.asp", 1
%>
