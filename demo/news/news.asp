<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
Dim Page_Title, Kind
Page_Title = Say("全部新闻", "All news")
Kind = LCase(Request.QueryString("type") & "")
' The list of help items is asked for under another name.
If Request.QueryString("tp") = "help" Then Response.Redirect "/news/news.asp?type=help"
' The links of the pager carry type as it came, so nothing but the two kinds may come.
If Kind <> "" And Kind <> "news" And Kind <> "help" Then Response.Redirect "/news/news.asp"
If Request("page") <> "" And NumberOfRequest("page") = "" Then Response.Redirect "/news/news.asp"

' The page that was asked for; one that is not there leads back to the first.
Function NewsPage()
    On Error Resume Next
    NewsPage = Site.Show_NewsPageList(Agent_User)
    If (Err.Number = 3001 Or Err.Number = 3021) And Request("page") <> "" Then Response.Redirect "/news/news.asp?type=" & Kind
    Dim number, text
    number = Err.Number : text = Err.Description
    On Error Goto 0
    If number <> 0 Then Err.Raise number, , text
    NewsPage = Site.Set_Tags(NewsPage, "templatePath", Template_Path)
End Function

Sub KindEntry(name, words)
    Dim mark
    mark = ""
    If name = Kind Then mark = " aria-current=""true"""
    Response.Write "<li><a href=""/news/news.asp?type=" & name & """" & mark & ">" & words & "</a></li>" & vbCrLf
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<nav class="filters" aria-label="<%= Say("按种类", "By kind") %>"><ul class="chips">
<% KindEntry "", Say("全部", "All")
KindEntry "news", Say("新闻", "News")
KindEntry "help", Say("帮助", "Help") %></ul></nav>
<div class="news news-page">
<%= NewsPage() %>
</div>
</section>
<!--#include virtual="/include/footer.inc"-->
