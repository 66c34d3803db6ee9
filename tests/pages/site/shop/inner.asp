<!--#include file="part.inc"-->
<%= "inner sees [" & name & "] of " & Request.ServerVariables("SCRIPT_NAME") %>
<% name = "inner" : Session("seen") = Session("seen") + 1 %>
