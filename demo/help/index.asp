<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
' A page of a template file of the site's own: Help.html of the storefront's template folder.
Dim Page_Title
Page_Title = Say("帮助", "Help")

Function HelpText()
    Dim file
    file = Template_Path & "Help.html"
    Site.loadfile_fromcache file
    HelpText = Site.GetKey(Application("Rk_Tp_" & file), "<!--Help-->", "<!--End Help-->")
    HelpText = Site.Set_Tags(HelpText, "HelpList", Site.Show_NewsList("help", 8, "· ", Say(24, 36), 6, "1", Agent_User))
    HelpText = Site.Set_Tags(HelpText, "Service", Html(Setting("service", "sales@shop.example")))
End Function
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap help">
<h1><%= Page_Title %></h1>
<%= HelpText() %>
</section>
<!--#include virtual="/include/footer.inc"-->
