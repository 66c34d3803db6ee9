<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<%
Dim Page_Title, Ini, Section, Saved
Page_Title = Say("站点设置", "Settings")
Set Ini = Server.CreateObject("Rkclient.classIniFile")
Ini.INIFileName = SettingsFile()
' Each storefront has a section of its own.
Section = "shop " & Agent_User
Saved = ""

Sub Keep(key)
    Dim value
    value = Replace(Replace(Given(key), vbCr, " "), vbLf, " ")
    If value = "" Then
        Ini.DelIniKey Section, key
    Else
        Ini.WriteIniKey Section, key, value
    End If
End Sub

If IsPosted() Then
    If Given("clear") <> "" Then
        Ini.DelIniSec Section
        Saved = Say("已恢复默认。", "Back to the defaults.")
    Else
        Keep "notice"
        Keep "service"
        Keep "hours"
        Saved = Say("已保存。", "Saved.")
    End If
End If
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap narrow">
<h1><%= Page_Title %></h1>
<% If Saved <> "" Then Outcome "good", Saved %>
<form class="tool" method="post" action="/services/settings.asp">
<% Field "notice", Say("公告", "Notice"), Ini.GetIniKey(Section, "notice"), "" %>
<% Field "service", Say("客服", "Contact"), Ini.GetIniKey(Section, "service"), "" %>
<% Field "hours", Say("服务时间", "Hours"), Ini.GetIniKey(Section, "hours"), Say("留空即删除。", "An empty field deletes its key.") %>
<p class="actions"><button class="button"><%= Say("保存", "Save") %></button>
<button class="button quiet" name="clear" value="1"><%= Say("全部删除", "Delete all") %></button></p>
</form>
</section>
<!--#include virtual="/include/footer.inc"-->
