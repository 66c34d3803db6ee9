<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
Dim Page_Title, Item_Title, Item_Time
Page_Title = Say("新闻", "News")

' One item that this storefront may show: its own, or one for every site.
Sub ReadItem(id)
    Dim database, rows
    Item_Title = "" : Item_Time = ""
    If id = "" Then Exit Sub
    Set database = OpenDatabase()
    Set rows = database.Execute("Select [Title],[Time] From [Rk_News] Where [Id]=" & id & " And (" & OwnRows() & " Or [EveryOne]=1)")
    If Not rows.EOF Then
        Item_Title = rows("Title") & "" : Item_Time = rows("Time") & ""
    End If
    rows.Close
    database.Close
End Sub

ReadItem NumberOfRequest("id")
If Item_Title = "" Then
    Response.Status = "404 Not Found"
Else
    Page_Title = Item_Title
End If
%>
<!--#include virtual="/include/header.inc"-->
<article class="wrap narrow news-item">
<h1><%= Html(Page_Title) %></h1>
<% If Item_Title = "" Then %>
<p class="note"><%= Say("没有这条新闻。", "There is no such item.") %></p>
<% Else %>
<p><time><%= Html(Item_Time) %></time></p>
<% End If %>
<p><a href="/news/news.asp"><%= Say("全部新闻", "All news") %></a></p>
</article>
<!--#include virtual="/include/footer.inc"-->
