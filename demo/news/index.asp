<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title
Page_Title = Say("新闻", "News")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<div class="columns">
<div class="news" id="latest"><h2><%= Say("最新消息", "Latest") %></h2>
<% Site.getnews 1, 6, 1, Say(18, 30), Agent_User %>
</div>
<div class="news" id="help"><h2><%= Say("帮助", "Help") %></h2>
<% Site.getnews 0, 6, 0, Say(18, 30), Agent_User %>
</div>
<div class="news" id="everyone"><h2><%= Say("各站通知", "From all our sites") %></h2>
<%= Site.Show_NewsList("news", 6, "· ", Say(18, 30), 6, "1", Agent_User) %>
</div>
</div>
<p><a class="button quiet" href="/news/news.asp"><%= Say("全部新闻", "All news") %></a></p>
</section>
<!--#include virtual="/include/footer.inc"-->
