<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
Dim Page_Title, Class_Id, View, Rows_Per_Line
Page_Title = Say("虚拟主机", "Hosting plans")
Class_Id = ClassOfRequest("/host/index.asp")
' A mistyped page goes back to the first one instead of failing.
If Request("Page") <> "" And Not IsNumeric(Request("Page")) Then Response.Redirect "/host/index.asp"

If Request.QueryString("View") = "table" Then
    View = "Table"
    Rows_Per_Line = "0"
Else
    View = "Card"
    Rows_Per_Line = "3"
End If

Sub ViewEntry(name, words)
    Dim mark
    mark = ""
    If View = name Then mark = " aria-current=""true"""
    Response.Write "<li><a href=""?ServerId=" & Html(Class_Id) & "&amp;View=" & LCase(name) & """" & mark & ">" & words & "</a></li>" & vbCrLf
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<div class="filters">
<%= ClassLinks("/host", "/host/index.asp", Class_Id) %>
<nav aria-label="<%= Say("显示方式", "View") %>">
<ul class="chips">
<% ViewEntry "Card", Say("卡片", "Cards") %>
<% ViewEntry "Table", Say("表格", "Table") %>
</ul>
</nav>
</div>
<%= Site.Show_HostList(View, "0", Rows_Per_Line, "</div><div class=""row"">", "Id", "26", "24", "9", Agent_User) %>
</section>
<!--#include virtual="/include/footer.inc"-->
