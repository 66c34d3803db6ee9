<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/money.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<!--#include virtual="/include/owner.inc"-->
<%
Dim Page_Title
RequireOwner
Page_Title = Say("账目", "Accounts")
If Request.ServerVariables("REQUEST_METHOD") = "POST" Then RecordMovement

Sub RecordMovement()
    Dim customer, amount, spends
    GuardForm
    customer = Trim(Request.Form("customer") & "")
    amount = Trim(Request.Form("amount") & "")
    If customer = "" Then Refuse Say("请填写客户。", "Please name the customer.")
    If Not IsAmount(amount) Then Refuse Say("金额须为数字，最多两位小数。", "The amount must be a number with two decimals at most.")
    spends = Request.Form("kind") = "spend"
    WriteMovement Left(customer, 30), CCur(amount), spends, Left(Request.Form("info") & "", 80)
    Site.MessBox Say("已记账。", "The movement was recorded."), "/owner/money.asp", 1
End Sub

Function IsAmount(text)
    Dim digits
    Set digits = New RegExp
    digits.Pattern = "^[0-9]{1,7}([.][0-9]{1,2})?$"
    IsAmount = digits.Test(text)
End Function

' What the customer has left is read and the row written in one transaction, or two visitors at once
' could start from the same sum.
Sub WriteMovement(customer, amount, spends, info)
    Dim database, rows, change, bought, left_over
    change = amount : bought = 0
    If spends Then change = -amount : bought = amount
    Set database = OpenDatabase()
    database.BeginTrans
    Set rows = database.Execute("Select Sum([money]) As total From [MoneyLog] Where [user]='" & Replace(customer, "'", "''") & "'")
    left_over = change
    If Not IsNull(rows("total")) Then left_over = rows("total") + change
    rows.Close
    Site.WriteMoneyLog customer, KindOf(spends), change, bought, left_over, info
    database.CommitTrans
    database.Close
End Sub

Function KindOf(spends)
    KindOf = "充值"
    If spends Then KindOf = "消费"
End Function
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% OwnerMenu %>
<form class="form across" method="post">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<p><label for="customer"><%= Say("客户", "Customer") %></label>
<input id="customer" name="customer" maxlength="30"></p>
<p><label for="kind"><%= Say("类型", "Kind") %></label>
<select id="kind" name="kind"><option value="pay"><%= Say("充值", "Paid in") %></option><option value="spend"><%= Say("消费", "Spent") %></option></select></p>
<p><label for="amount"><%= Say("金额", "Amount") %></label>
<input id="amount" name="amount" inputmode="decimal" maxlength="10"></p>
<p><label for="info"><%= Say("说明", "Note") %></label>
<input id="info" name="info" maxlength="80"></p>
<p class="send"><button class="button" type="submit"><%= Say("记账", "Record") %></button></p>
</form>
</section>
<section class="wrap">
<h2><%= Say("最近的账目", "Last movements") %></h2>
<% MovementsTable "" %>
</section>
<!--#include virtual="/include/footer.inc"-->
