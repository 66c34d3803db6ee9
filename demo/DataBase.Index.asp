<%
' The address of the databases in the jump list.
Response.Redirect "/database/index.asp"
%>
