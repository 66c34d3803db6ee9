<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<!--#include virtual="/include/owner.inc"-->
<%
Dim Page_Title, Message
RequireOwner
Page_Title = Say("订单日志", "Order log")
Message = Given("message")
If IsPosted() And Message <> "" Then
    ' A line of the log is one line.
    Host.writelog "[" & Brand & "] " & Replace(Replace(Message, vbCr, " "), vbLf, " ")
    Response.Redirect "/owner/log.asp"
End If

' A file's text in the server's ANSI code page, which the log is written in.
Function AnsiText(file)
    Dim stream
    Set stream = Server.CreateObject("ADODB.Stream")
    stream.Open
    stream.Type = 1
    stream.LoadFromFile file
    AnsiText = Host.bytes2bstr(stream.Read)
    stream.Close
End Function

' The lines of today's file, the last first.
Sub ShowLines()
    Dim files, file, lines, i, shown
    Set files = Server.CreateObject("Scripting.FileSystemObject")
    file = Server.MapPath("/log/" & Date() & ".log")
    If Not files.FileExists(file) Then
        Response.Write "<p class=""note"">" & Say("今天还没有记录。", "Nothing today so far.") & "</p>"
        Exit Sub
    End If
    lines = Split(AnsiText(file), vbCrLf)
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
<section class="wrap">
<h1><%= Page_Title %></h1>
<% OwnerMenu %>
<form class="tool" method="post" action="/owner/log.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<% Field "message", Say("内容", "Line"), "", Say("例如 订单 1024 已付款", "Such as: order 1024 paid") %>
<% Send Say("记一行", "Write") %>
</form>
<h2><%= Say("今天", "Today") %></h2>
<% ShowLines %>
</section>
<!--#include virtual="/include/footer.inc"-->
