<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<!--#include virtual="/include/owner.inc"-->
<%
' Edits a file of a template folder. Only files that are there can be named; the cache is told at
' once, so that the next page shows the change.
Dim Page_Title, File, Text, Told, Told_Kind
RequireOwner
Page_Title = Say("模板", "Templates")
Told = ""
File = KnownFile(Given("file"))
If IsPosted() Then
    Text = Request.Form("text") & ""
    KeepText
ElseIf File <> "" Then
    Text = FileText()
End If

' The virtual path of a template file, or an empty text for anything else.
Function KnownFile(path)
    Dim plain, files
    KnownFile = ""
    Set plain = New RegExp
    plain.Pattern = "^/Template/[0-9A-Za-z_\-]+/[0-9A-Za-z_\-]+\.(html|css)$"
    If Not plain.Test(path) Then Exit Function
    Set files = Server.CreateObject("Scripting.FileSystemObject")
    If files.FileExists(Server.MapPath(path)) Then KnownFile = path
End Function

' As it lies on the disk, read into the cache on the way.
Function FileText()
    If Site.loadfile(File) = "Not File!" Then
        Told = Say("文件打不开。", "The file cannot be opened.") : Told_Kind = "bad"
        Exit Function
    End If
    FileText = Application("Rk_Tp_" & File)
End Function

Sub KeepText()
    Dim stream, bytes
    Told_Kind = "bad"
    If File = "" Then
        Told = Say("没有这个文件。", "There is no such file.")
    ElseIf Trim(Text) = "" Then
        Told = Say("模板不能是空的。", "A template cannot be empty.")
    Else
        Set stream = Server.CreateObject("ADODB.Stream")
        stream.Open
        stream.Type = 2 : stream.Charset = "utf-8"
        stream.WriteText Text
        ' Without the three bytes that mark the encoding.
        stream.Position = 0 : stream.Type = 1 : stream.Position = 3
        Set bytes = Server.CreateObject("ADODB.Stream")
        bytes.Open
        bytes.Type = 1
        bytes.Write stream.Read
        bytes.SaveToFile Server.MapPath(File), 2
        stream.Close
        bytes.Close
        Site.update_cache File
        Host.writelog "[" & Brand & "] template " & File
        Told_Kind = "good"
        Told = Say("已保存，缓存已更新。", "Saved, and the cache is up to date.")
    End If
End Sub

Sub FileOptions()
    Dim files, folder, entry, path, mark
    Set files = Server.CreateObject("Scripting.FileSystemObject")
    For Each folder In files.GetFolder(Server.MapPath("/Template")).SubFolders
        Response.Write "<optgroup label=""" & Html(folder.Name) & """>" & vbCrLf
        For Each entry In folder.Files
            path = "/Template/" & folder.Name & "/" & entry.Name
            mark = ""
            If path = File Then mark = " selected"
            If KnownFile(path) <> "" Then Response.Write "<option value=""" & Html(path) & """" & mark & ">" & Html(entry.Name) & "</option>" & vbCrLf
        Next
        Response.Write "</optgroup>" & vbCrLf
    Next
End Sub

' What the file is made of: its blocks by their markers, and whether it is laid out in tables.
Function Shape()
    Dim piece, marks
    marks = ""
    For Each piece In Split(Text, "<!--")
        If InStr(piece, "-->") > 0 Then marks = marks & " <code>" & Html(Site.GetKey("<!--" & piece, "<!--", "-->")) & "</code>"
    Next
    Shape = Site.CheckTempType(Text, "<!---->") & ":" & marks
End Function
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% OwnerMenu %>
<% If Told <> "" Then Outcome Told_Kind, Told %>
<form class="tool" method="get" action="/owner/templates.asp">
<p class="field"><label for="file"><%= Say("文件", "File") %></label>
<select id="file" name="file"><% FileOptions %></select></p>
<% Send Say("打开", "Open") %>
</form>
<% If File <> "" Then %>
<h2><%= Html(File) %></h2>
<p class="about"><%= Shape() %></p>
<form class="tool" method="post" action="/owner/templates.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<input type="hidden" name="file" value="<%= Html(File) %>">
<p class="field"><label for="text"><%= Say("内容", "Text") %></label>
<textarea id="text" name="text" rows="20" spellcheck="false"><%= vbCrLf & Html(Text) %></textarea></p>
<% Send Say("保存", "Save") %>
</form>
<% End If %>
</section>
<!--#include virtual="/include/footer.inc"-->
