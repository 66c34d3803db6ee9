<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include virtual="/include/storefront.inc"-->
<!--#include virtual="/include/catalogue.inc"-->
<%
Dim Page_Title, Class_Id, Mails, Chosen
Page_Title = Say("企业邮局", "Mail for companies")
Class_Id = ClassOfRequest("/mail/mail.asp")
Mails = Site.Show_MailList("", "0", "3", "</div><div class=""row"">", "Price", "26", "24", Agent_User)
' The jump list and the hosting plans lead here with the number of one mail plan.
Chosen = " id=""plan-" & NumberOfRequest("id") & """"
Mails = Replace(Mails, Chosen, Chosen & " aria-current=""true""")
%>
<!--#include virtual="/include/header.inc"-->
<section class="wrap">
<h1><%= Page_Title %></h1>
<%= ClassLinks("/mail/mail.asp", "/mail/mail.asp", Class_Id) %>
<%= Mails %>
</section>
<!--#include virtual="/include/footer.inc"-->
