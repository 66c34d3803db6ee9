<%
' The address that the menu marks as the domains' own; the page itself is the folder's.
Server.Transfer "/domain/index.asp"
%>
