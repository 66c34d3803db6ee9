<html>
<!--#include file="INC\Top.asp"-->
<%
Dim total
total = 0
For Each price In Array(1.5, 2, 0.25)
%>
  <li><%= Money(price) %></li>
<%  total = total + price
Next %>
<b><%= Money(total) %></b>
<!-- #include virtual = "/Inc/end.inc" -->