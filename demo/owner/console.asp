<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/services.inc"-->
<!--#include virtual="/include/guard.inc"-->
<!--#include virtual="/include/digest.inc"-->
<!--#include virtual="/include/account.inc"-->
<!--#include virtual="/include/owner.inc"-->
<%
Dim Page_Title, Command, Answer, Asked
RequireOwner
Page_Title = Say("主机控制台", "Hosting console")
Command = Given("command")
Asked = False
If IsPosted() And Command <> "" Then
    Asked = True
    Answer = Told(Command)
    Host.writelog "[" & Brand & "] " & Replace(Replace(Command, vbCr, " "), vbLf, " ") & " -> " & Left(Answer, 3)
End If

' Where the control server is stands in an INI file that no visitor is served.
Function Told(words)
    Dim ini, port
    Set ini = Server.CreateObject("Rkclient.classIniFile")
    ini.INIFileName = Server.MapPath("/data/control.ini")
    port = ini.GetIniKey("control", "port")
    If port = "" Then
        Told = Say("控制服务器的地址还没有设置，见 data/control.ini。", "No control server is set: see data/control.ini.")
        Exit Function
    End If
    Host.Init ini.GetIniKey("control", "server"), port, ini.GetIniKey("control", "password")
    Told = Host.ReturnText(words)
End Function
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<% OwnerMenu %>
<form class="tool" method="post" action="/owner/console.asp">
<input type="hidden" name="form_secret" value="<%= FormSecret() %>">
<% Field "command", Say("命令", "Command"), Command, "help, ping, list, open NAME PLAN, close NAME" %>
<% Send Say("发送", "Send") %>
</form>
<% If Asked Then %>
<pre class="console" role="status"><samp>&gt; <%= Html(Command) %>
<%= Html(Answer) %></samp></pre>
<% End If %>
</section>
<!--#include virtual="/include/footer.inc"-->
