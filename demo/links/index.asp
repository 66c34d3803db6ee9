<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/strips.inc"-->
<%
' Partners and hosted sites; with id=2, where the strip of companies leads, all companies.
Dim Page_Title, Firms
Page_Title = Say("友情链接", "Links")
Firms = ""
If Request.QueryString("id") = "2" Then Firms = Companies(0)
If Firms <> "" Then Page_Title = Say("各地服务点", "Near you")
%>
<!--#include virtual="/include/header.inc"-->
<% If Firms <> "" Then %>
<section class="wrap companies">
<h1><%= Page_Title %></h1>
<%= Firms %>
<p><a href="/links/index.asp"><%= Say("友情链接", "Links") %></a></p>
</section>
<% Else %>
<script src="/js/marquee.js"></script>
<section class="wrap strips">
<h1><%= Page_Title %></h1>
<% Part Say("合作伙伴", "Partners"), PartnerLinks(1000, 3)
Part Say("他们在这里安家", "At home on our servers"), HostedSites(1000, 2) %>
<p class="note"><%= Say("想交换链接？", "Shall we link to each other?") %> <a href="/contact.asp"><%= Say("联系我们", "Contact") %></a></p>
</section>
<% End If %>
<!--#include virtual="/include/footer.inc"-->
