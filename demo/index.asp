<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/strips.inc"-->
<%
Dim Page_Title, Notice, Firms, Offers, Cases
Page_Title = Say("首页", "Home")
Notice = Setting("notice", "")
Firms = Companies(5)
Offers = Slides(1112, 300)
Cases = Site.Show_SuccessList("6", Say("12", "24"), "240", "32", "· ", Agent_User)
If Cases <> "" Then Cases = "<ul class=""boxes"">" & Cases & "</ul>"
%>
<!--#include virtual="/include/header.inc"-->
<section class="hero">
<div class="wrap">
<div>
<h1><%= Html(Slogan) %></h1>
<p><%= Say("独立应用池、每日备份、七天试用。选好方案，十分钟内开通。", "Your own application pool, a backup every night, seven days to try. Open ten minutes after you order.") %></p>
<p><a class="button" href="/host/index.asp"><%= Say("查看全部主机", "See all plans") %></a>
<a class="button quiet" href="/contact.asp"><%= Say("找人问问", "Talk to us") %></a></p>
</div>
<img src="/images/hero.svg" alt="" width="420" height="300">
</div>
</section>
<% If Notice <> "" Then %>
<section class="wrap"><p class="note"><%= Html(Notice) %></p></section>
<% End If %>
<section class="wrap">
<h2><%= Say("找一个域名", "Find a domain") %></h2>
<form class="domain-search" method="get" action="/domain/index.asp">
<p><label for="name"><%= Say("想要的名字", "The name you want") %></label>
<input id="name" name="name" maxlength="63" required>
<button class="button"><%= Say("查询", "Search") %></button></p>
<fieldset><legend><%= Say("后缀", "Suffixes") %></legend>
<%= Site.Show_sDomainList("6", "110", "34", "", "IdKey", Agent_User) %>
</fieldset>
</form>
</section>
<% If Offers <> "" Then %>
<section class="wrap" aria-label="<%= Say("优惠", "Offers") %>">
<%= Offers %></section>
<% End If %>
<section class="wrap">
<h2><%= Say("推荐方案", "Good places to start") %></h2>
<%= Site.Show_HostList("", "6", "3", "</div><div class=""row"">", "Id", "26", "24", "6", Agent_User) %>
</section>
<section class="wrap">
<div class="columns">
<div class="news"><h2><%= Say("最新消息", "Latest") %></h2>
<% Site.getnews 1, 5, 1, Say(18, 26), Agent_User %>
</div>
<% Part Say("客户案例", "Customers"), Cases
Part Say("下载", "Downloads"), Downloads(4, 300) %>
</div>
</section>
<section class="wrap reasons">
<h2><%= Say("为什么选我们", "What you can count on") %></h2>
<ul>
<li><h3><%= Say("独立应用池", "A pool of its own") %></h3><p><%= Say("每个站点有自己的进程和处理器上限，邻居再忙也不影响您。", "Each site has its own process and its own share of the processor, however busy the neighbours are.") %></p></li>
<li><h3><%= Say("每日备份", "Nightly backups") %></h3><p><%= Say("文件和数据库每天凌晨备份一次，保留三十天。", "Files and databases are saved every night and kept for thirty days.") %></p></li>
<li><h3><%= Say("随时升级", "Room to grow") %></h3><p><%= Say("只补差价，网址、文件和数据库都不用动。", "Move up a plan and pay the difference: address, files and databases stay where they are.") %></p></li>
</ul>
</section>
<script src="/js/marquee.js"></script>
<section class="wrap">
<div class="columns strips">
<% Part Say("友情链接", "Partners"), PartnerLinks(500, 2)
Part Say("他们在这里安家", "At home on our servers"), HostedSites(500, 2) %>
</div>
</section>
<% If Firms <> "" Then %>
<section class="wrap companies">
<h2><%= Say("各地服务点", "Near you") %></h2>
<%= Firms %>
</section>
<% End If %>
<!--#include virtual="/include/footer.inc"-->
