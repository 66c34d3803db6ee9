<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<!--#include virtual="/include/owner.inc"-->
<%
Dim Page_Title, Ini, Section, Saved
RequireOwner
Page_Title = Say("站点设置", "Settings")
Set Ini = Settings
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
        Keep "name"
        Keep "slogan"
        Keep "language"
        Keep "notice"
        Keep "service"
        Keep "hours"
        Saved = Say("已保存。", "Saved.")
    End If
End If
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% OwnerMenu %>
<% If Saved <> "" Then Outcome "good", Saved %>
<form class="tool" method="post" action="/owner/settings.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<% Field "name", Say("店名", "Name of the shop"), Ini.GetIniKey(Section, "name"), Say("其他页面下次打开时生效。", "Seen on the next page.") %>
<% Field "slogan", Say("标语", "Slogan"), Ini.GetIniKey(Section, "slogan"), "" %>
<% Field "language", Say("语言", "Language"), Ini.GetIniKey(Section, "language"), "zh-CN, en" %>
<% Field "notice", Say("公告", "Notice"), Ini.GetIniKey(Section, "notice"), "" %>
<% Field "service", Say("客服", "Contact"), Ini.GetIniKey(Section, "service"), "" %>
<% Field "hours", Say("服务时间", "Hours"), Ini.GetIniKey(Section, "hours"), Say("留空即删除。", "An empty field deletes its key.") %>
<p class="actions"><button class="button"><%= Say("保存", "Save") %></button>
<button class="button quiet" name="clear" value="1"><%= Say("全部删除", "Delete all") %></button></p>
</form>
</section>
<!--#include virtual="/include/footer.inc"-->
