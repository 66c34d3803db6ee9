<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/strips.inc"-->
<%
Dim Page_Title
Page_Title = Say("下载", "Downloads")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow downloads">
<h1><%= Page_Title %></h1>
<% If Downloads(50, 300) = "" Then %>
<p class="note"><%= Say("还没有可下载的文件。", "Nothing to download so far.") %></p>
<% Else %>
<%= Downloads(50, 300) %>
<% End If %>
</section>
<!--#include virtual="/include/footer.inc"-->
