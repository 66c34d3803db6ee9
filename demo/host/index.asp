<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title, Page_Section, Class_Id, View, Rows_Per_Line
Page_Title = Say("虚拟主机", "Hosting plans")
Page_Section = "host"

' A mistyped address goes back to the whole list instead of failing.
Class_Id = Request.QueryString("ServerId") & ""
If Class_Id <> "" And Not IsNumeric(Class_Id) Then Response.Redirect "/host/index.asp"
If Request("Page") <> "" And Not IsNumeric(Request("Page")) Then Response.Redirect "/host/index.asp"

If Request.QueryString("View") = "table" Then
    View = "Table"
    Rows_Per_Line = "0"
Else
    View = "Card"
    Rows_Per_Line = "3"
End If

Sub ClassEntry(id, words)
    Dim mark
    mark = ""
    If Class_Id = id Then mark = " aria-current=""true"""
    Response.Write "<li><a href=""?ServerId=" & id & "&amp;View=" & LCase(View) & """" & mark & ">" & words & "</a></li>" & vbCrLf
End Sub

Sub ViewEntry(name, words)
    Dim mark
    mark = ""
    If View = name Then mark = " aria-current=""true"""
    Response.Write "<li><a href=""?ServerId=" & Html(Class_Id) & "&amp;View=" & LCase(name) & """" & mark & ">" & words & "</a></li>" & vbCrLf
End Sub

Sub ClassEntries()
    Dim database, rows
    Set database = OpenDatabase()
    Set rows = database.Execute("Select [Id],[ClassName] From [Rk_ProClass] Where ClassType='host' And " & OwnRows())
    Do While Not rows.EOF
        ClassEntry CStr(rows("Id")), Html(rows("ClassName"))
        rows.MoveNext
    Loop
    rows.Close
    database.Close
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<div class="filters">
<nav aria-label="<%= Say("按类别", "By class") %>">
<ul class="chips">
<% ClassEntry "", Say("全部", "All") %>
<% ClassEntries %>
</ul>
</nav>
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
