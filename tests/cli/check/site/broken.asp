<p>One line of page.</p>
<%
If True Then
  Response.Write "no end"
%>
