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
Tool "address.asp", Say("网址编码", "Addresses in UTF-8"), Say("把中文地址变成浏览器认识的样子。", "A Chinese address as browsers send it.")
Tool "filing.asp", Say("备案查询", "Filing lookup"), Say("核对备案号与域名。", "Whether a filing number is on record for a domain.")
%>
</ul>
</section>
<!--#include virtual="/include/footer.inc"-->
