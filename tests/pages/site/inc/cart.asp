<%
Dim Cart
Set Cart = Server.CreateObject("Scripting.Dictionary")
Cart.CompareMode = 1
%>
