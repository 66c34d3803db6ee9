<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<!--#include virtual="/include/owner.inc"-->
<%
Dim Page_Title
RequireOwner
Page_Title = Say("店主", "Owner")

Sub Count(table, words)
    Dim database, rows
    Set database = OpenDatabase()
    Set rows = database.Execute("Select Count(*) As n From [" & table & "]")
    Response.Write "<dt>" & words & "</dt><dd>" & rows("n") & "</dd>" & vbCrLf
    rows.Close
    database.Close
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% OwnerMenu %>
<% If PasswordFits("owner", "owner") Then Outcome "bad", Say("店主还在用演示密码，请", "The owner still has the demo's password: ") & "<a href=""/user/index.asp"">" & Say("修改", "change it") & "</a>" & Say("。", ".") %>
<dl class="facts">
<% Count "Rk_HostList", Say("主机方案", "Hosting plans")
Count "Rk_ShopList", Say("商品", "Articles")
Count "Rk_AgentSet", Say("代理", "Agents")
Count "Rk_AgentPriceSet", Say("代理价", "Prices of agents")
Count "Rk_News", Say("新闻", "News")
Count "MoneyLog", Say("账目", "Movements") %>
</dl>
<p><a class="button quiet" href="/user/index.asp"><%= Say("我的账户", "My account") %></a>
<a class="button quiet" href="/user/login.asp?leave=1"><%= Say("退出", "Sign out") %></a></p>
</section>
<!--#include virtual="/include/footer.inc"-->
