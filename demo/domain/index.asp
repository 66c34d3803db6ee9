<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<%
Dim Page_Title, Wanted
Page_Title = Say("域名", "Domains")
Wanted = Trim(Request.QueryString("name") & "")

' The wanted name under each suffix whose box was ticked; a box bears its suffix without the dots.
Function WantedNames()
    Dim database, rows, suffix
    Set database = OpenDatabase()
    Set rows = database.Execute("Select [Type] From [Rk_DomainList] Order By [IdKey] Desc")
    Do While Not rows.EOF
        suffix = rows("Type") & ""
        If Request.QueryString(Replace(suffix, ".", "")) = "yes" Then
            WantedNames = WantedNames & "<li>" & Html(Wanted & suffix) & "</li>" & vbCrLf
        End If
        rows.MoveNext
    Loop
    rows.Close
    database.Close
End Function
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<form class="domain-search" method="get">
<p><label for="name"><%= Say("想要的名字", "The name you want") %></label>
<input id="name" name="name" maxlength="63" required value="<%= Html(Wanted) %>">
<button class="button"><%= Say("查询", "Search") %></button></p>
<fieldset><legend><%= Say("国际域名", "International suffixes") %></legend>
<%= Site.Show_sDomainList("0", "110", "34", "EN", "IdKey", Agent_User) %>
</fieldset>
<fieldset><legend><%= Say("中文域名", "Chinese suffixes") %></legend>
<%= Site.Show_sDomainList("0", "110", "34", "CH", "IdKey", Agent_User) %>
</fieldset>
</form>
<% If Wanted <> "" Then %>
<div class="note" role="status">
<p><%= Say("您要的域名，联系我们时请告诉我们：", "The domains you want; tell us these when you get in touch:") %></p>
<ul class="wanted">
<%= WantedNames() %></ul>
<p><a href="/contact.asp"><%= Say("联系我们", "Contact") %></a></p>
</div>
<% End If %>
</section>
<section class="wrap">
<h2><%= Say("国际域名价格", "International suffixes, prices") %></h2>
<%= Site.Show_DomainPriceList("", "EN", Agent_User) %>
</section>
<section class="wrap">
<h2><%= Say("中文域名价格", "Chinese suffixes, prices") %></h2>
<%= Site.Show_DomainPriceList("", "CN", Agent_User) %>
</section>
<!--#include virtual="/include/footer.inc"-->
