<%
If Application("begun") Then Response.Write "yes"
Application("begun") = False
%>
