<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
Dim Page_Title, Kind, Kinds
Page_Title = Say("全部案例", "All customers")
Kinds = Site.Show_SuccessItem("132", "40", Agent_User)
' The navigation carries Type as it came, so nothing but one of the categories may come.
Kind = Request.QueryString("Type") & ""
If Kind <> "" And InStr(Kinds, ">" & Html(Kind) & "</a>") = 0 Then Response.Redirect "/success/success.asp"
If Request.QueryString("Page") <> "" And NumberOfRequest("Page") = "" Then Response.Redirect "/success/success.asp"
If Kind <> "" Then Kinds = Replace(Kinds, ">" & Kind & "</a>", " aria-current=""true"">" & Kind & "</a>")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<nav aria-label="<%= Say("按类别", "By category") %>"><ul class="boxes"><%= Kinds %></ul></nav>
<%= Site.Show_SuccessPageList("", 6, "3", "</div><div class=""row"">", "Id", Agent_User) %>
</section>
<!--#include virtual="/include/footer.inc"-->
