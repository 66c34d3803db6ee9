<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/guard.inc"-->
<%
Dim Page_Title
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
    Site.MessBox Say("已记账。", "The movement was recorded."), "/money/index.asp", 1
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

Function KindInWords(kind)
    KindInWords = kind
    If kind = "充值" Then KindInWords = Say(kind, "Paid in")
    If kind = "消费" Then KindInWords = Say(kind, "Spent")
End Function

Sub Cell(label, value)
    Response.Write "<td class=""number"" data-label=""" & label & """>" & Html(value) & "</td>"
End Sub

Sub Movements()
    Dim database, rows
    Set database = OpenDatabase()
    Set rows = database.Execute("Select Top 10 * From [MoneyLog] Order By [Id] Desc")
    Do While Not rows.EOF
        Response.Write "<tr><th scope=""row"">" & Html(rows("user")) & "</th>"
        Response.Write "<td data-label=""" & Say("类型", "Kind") & """>" & Html(KindInWords(rows("type") & "")) & "</td>"
        Cell Say("金额", "Amount"), FormatNumber(rows("money"), 2)
        Cell Say("余额", "Balance"), FormatNumber(rows("logmoney"), 2)
        Response.Write "<td data-label=""" & Say("说明", "Note") & """>" & Html(rows("info")) & "</td>"
        Response.Write "<td data-label=""" & Say("时间", "Time") & """>" & Html(rows("now")) & "</td></tr>" & vbCrLf
        rows.MoveNext
    Loop
    rows.Close
    database.Close
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
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
<div class="scroll">
<table class="plan-table">
<caption><%= Say("最近十笔账目", "The last ten movements") %></caption>
<thead><tr><th scope="col"><%= Say("客户", "Customer") %></th><th scope="col"><%= Say("类型", "Kind") %></th><th scope="col" class="number"><%= Say("金额", "Amount") %></th><th scope="col" class="number"><%= Say("余额", "Balance") %></th><th scope="col"><%= Say("说明", "Note") %></th><th scope="col"><%= Say("时间", "Time") %></th></tr></thead>
<tbody>
<% Movements %>
</tbody>
</table>
</div>
</section>
<!--#include virtual="/include/footer.inc"-->
