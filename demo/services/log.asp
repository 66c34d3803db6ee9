<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<%
Dim Page_Title, Message
Page_Title = Say("订单日志", "Order log")
Message = Given("message")
If IsPosted() And Message <> "" Then
    ' A line of the log is one line.
    Host.writelog "[" & Brand & "] " & Replace(Replace(Message, vbCr, " "), vbLf, " ")
    Response.Redirect "/services/log.asp"
End If

' The lines of today's file, the last first.
Sub ShowLines()
    Dim files, file, lines, i, shown
    Set files = Server.CreateObject("Scripting.FileSystemObject")
    file = Server.MapPath("/log/" & Date() & ".log")
    If Not files.FileExists(file) Then
        Response.Write "<p class=""note"">" & Say("今天还没有记录。", "Nothing today so far.") & "</p>"
        Exit Sub
    End If
    lines = Split(files.OpenTextFile(file, 1).ReadAll, vbCrLf)
    Response.Write "<ol class=""lines"">" & vbCrLf
    shown = 0
    For i = UBound(lines) To 0 Step -1
        If lines(i) <> "" And shown < 20 Then
            Response.Write "<li><time>" & Html(Left(lines(i), 19)) & "</time> " & Html(Trim(Mid(lines(i), 20))) & "</li>" & vbCrLf
            shown = shown + 1
        End If
    Next
    Response.Write "</ol>" & vbCrLf
End Sub
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<form class="tool" method="post" action="/services/log.asp">
<% Field "message", Say("内容", "Line"), "", Say("例如 订单 1024 已付款", "Such as: order 1024 paid") %>
<% Send Say("记一行", "Write") %>
</form>
<h2><%= Say("今天", "Today") %></h2>
<% ShowLines %>
</section>
<!--#include virtual="/include/footer.inc"-->
