<%
Set Site = Server.CreateObject("Rkclient.SiteMain")
Response.Write Site.Show_Menu(" class=""now""", Request.QueryString("agent"))
%>
