<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<!--#include virtual="/include/owner.inc"-->
<%
' Agents, and their own names and prices of hosting plans.
Dim Page_Title, Told, Told_Kind
RequireOwner
Page_Title = Say("代理", "Agents")
Told = ""
If IsPosted() Then
    If Given("plan") <> "" Then
        KeepPrice
    Else
        AddAgent
    End If
End If

Sub Tell(kind, words)
    Told_Kind = kind : Told = words
End Sub

Sub AddAgent()
    Dim database, rows, name, domain, port
    name = Given("agent") : domain = LCase(Given("domain"))
    If Not IsUserName(name) Then
        Tell "bad", Say("用户名只能是字母和数字。", "A name is of letters and digits.")
        Exit Sub
    End If
    If Not IsDomain(domain) Then
        Tell "bad", Say("这不是域名。", "This is no domain.")
        Exit Sub
    End If
    Set database = OpenDatabase()
    Set rows = Server.CreateObject("ADODB.Recordset")
    rows.Open "Select * From [Rk_AgentSet] Where [AgentUser]='" & name & "'", database, 1, 3
    If Not rows.EOF Then
        Tell "bad", Say("这个代理已经有了。", "This agent is there already.")
    Else
        ' A browser's Host has the port where it is not the usual one: both stand in the list.
        port = ""
        If InStr(Host_Name, ":") > 0 Then port = Mid(Host_Name, InStrRev(Host_Name, ":"))
        rows.AddNew
        rows("AgentUser") = name
        rows("AgentDomain") = domain
        If port <> "" Then rows("AgentDomain") = domain & port & "," & domain
        rows("template") = CLng(NumberGiven("template", 1))
        rows("succlass") = ""
        rows.Update
        Host.writelog "[" & Brand & "] agent " & name
        Tell "good", Say("代理已添加：", "The agent is there: ") & "<a href=""http://" & Html(domain & port) & "/"">" & Html(domain & port) & "</a>"
    End If
    rows.Close
    database.Close
End Sub

Function IsDomain(text)
    Dim plain
    Set plain = New RegExp
    plain.Pattern = "^[0-9a-z\-]+(\.[0-9a-z\-]+)+$"
    IsDomain = plain.Test(text)
End Function

Function NumberGiven(name, otherwise)
    Dim plain
    Set plain = New RegExp
    plain.Pattern = "^[0-9]{1,7}([.][0-9]{1,2})?$"
    NumberGiven = Given(name)
    If Not plain.Test(NumberGiven) Then NumberGiven = otherwise
End Function

Sub KeepPrice()
    Dim database, rows, agent, plan
    agent = Given("user") : plan = NumberGiven("plan", "")
    If Not IsUserName(agent) Or plan = "" Or NumberGiven("price", "") = "" Then
        Tell "bad", Say("请选择代理和方案，并填写价格。", "Choose an agent and a plan, and fill in the price.")
        Exit Sub
    End If
    Set database = OpenDatabase()
    Set rows = Server.CreateObject("ADODB.Recordset")
    rows.Open "Select * From [Rk_AgentPriceSet] Where [AgentUser]='" & agent & "' And [MastId]=" & CLng(plan) & " And [PriceType]='Host'", database, 1, 3
    If rows.EOF Then
        rows.AddNew
        rows("AgentUser") = agent : rows("MastId") = CLng(plan) : rows("PriceType") = "Host"
        rows("ProClass") = 0
        rows("AgentSetName") = PlanName(database, plan)
    End If
    If Given("name") <> "" Then rows("AgentSetName") = Left(Given("name"), 60)
    rows("Price") = CCur(NumberGiven("price", 0))
    rows("MonPrice") = CCur(NumberGiven("month", 0))
    rows.Update
    rows.Close
    database.Close
    Host.writelog "[" & Brand & "] price of " & agent & ", plan " & plan
    Tell "good", Say("价格已保存。", "The price was saved.")
End Sub

Function PlanName(database, plan)
    Dim rows
    PlanName = ""
    Set rows = database.Execute("Select [HostName] From [Rk_HostList] Where [Id]=" & CLng(plan))
    If Not rows.EOF Then PlanName = rows("HostName") & ""
    rows.Close
End Function

Sub Options(sql)
    Dim database, rows
    Set database = OpenDatabase()
    Set rows = database.Execute(sql)
    Do While Not rows.EOF
        Response.Write "<option value=""" & Html(rows(0)) & """>" & Html(rows(1)) & "</option>" & vbCrLf
        rows.MoveNext
    Loop
    rows.Close
    database.Close
End Sub

Sub AgentRows()
    Dim database, rows
    Set database = OpenDatabase()
    Set rows = database.Execute("Select [AgentUser],[AgentDomain],[templatePath] From [Rk_AgentSet],[Rk_Template] Where [Rk_AgentSet].[template]=[Rk_Template].[Id] Order By [Rk_AgentSet].[Id]")
    Do While Not rows.EOF
        Response.Write "<tr><th scope=""row"">" & Html(rows("AgentUser")) & "</th><td data-label=""" & Say("域名", "Domains") & """>" & Html(Replace(rows("AgentDomain") & "", ",", ", ")) & "</td><td data-label=""" & Say("模板", "Template") & """>" & Html(rows("templatePath")) & "</td></tr>" & vbCrLf
        rows.MoveNext
    Loop
    rows.Close
    database.Close
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% OwnerMenu %>
<% If Told <> "" Then Outcome Told_Kind, Told %>
<div class="scroll"><table class="plan-table"><caption><%= Page_Title %></caption>
<thead><tr><th scope="col"><%= Say("用户名", "Name") %></th><th scope="col"><%= Say("域名", "Domains") %></th><th scope="col"><%= Say("模板", "Template") %></th></tr></thead>
<tbody><% AgentRows %></tbody></table></div>
</section>
<section class="wrap">
<div class="columns">
<div><h2><%= Say("添加代理", "A new agent") %></h2>
<form class="tool" method="post" action="/owner/agents.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<% Field "agent", Say("用户名", "Name"), "", "" %>
<% Field "domain", Say("域名", "Domain"), "", Say("例如 red.localhost", "Such as red.localhost") %>
<p class="field"><label for="template"><%= Say("模板", "Template") %></label>
<select id="template" name="template"><% Options "Select [Id],[templatePath] From [Rk_Template] Order By [Id]" %></select></p>
<% Send Say("添加", "Add") %>
</form></div>
<div><h2><%= Say("代理价", "A price") %></h2>
<form class="tool" method="post" action="/owner/agents.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<p class="field"><label for="user"><%= Say("代理", "Agent") %></label>
<select id="user" name="user"><% Options "Select [AgentUser],[AgentUser] From [Rk_AgentSet] Order By [Id]" %></select></p>
<p class="field"><label for="plan"><%= Say("方案", "Plan") %></label>
<select id="plan" name="plan"><% Options "Select [Id],[HostName] From [Rk_HostList] Where [AgentS]=1 Order By [Id] Desc" %></select></p>
<% Field "name", Say("代理自己的名称", "The agent's own name for it"), "", Say("留空则不变。", "Empty leaves it as it is.") %>
<% Field "price", Say("年价", "A year"), "", "" %>
<% Field "month", Say("月价", "A month"), "", Say("没有月付时留空。", "Empty where it is not sold by the month.") %>
<% Send Say("保存", "Save") %>
</form></div>
</div>
</section>
<!--#include virtual="/include/footer.inc"-->
