<%
' The address of a plan in the jump list.
Server.Transfer "/host/info.asp"
%>
