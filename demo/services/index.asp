<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title
Page_Title = Say("工具", "Tools")

Sub Tool(page, name, words)
    Response.Write "<li><a href=""/services/" & page & """>" & name & "</a><p>" & words & "</p></li>" & vbCrLf
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<ul class="tools">
<%
Tool "domain.asp", Say("域名查询", "Domain check"), Say("看一个域名是否还能注册。", "Whether a name is still free.")
Tool "filing.asp", Say("备案查询", "Filing lookup"), Say("核对备案号与域名。", "Whether a filing number is on record for a domain.")
Tool "log.asp", Say("订单日志", "Order log"), Say("记一行，看今天的记录。", "Write a line, and read today's.")
Tool "settings.asp", Say("站点设置", "Settings"), Say("读写 INI 文件。", "Kept in an INI file.")
Tool "console.asp", Say("主机控制台", "Hosting console"), Say("向控制服务器发送命令。", "Commands to the control server.")
%>
</ul>
</section>
<!--#include virtual="/include/footer.inc"-->
