<%
' An order and its movement in one transaction of the page's own, which ends as the query asks.
Dim Database, Site
Set Database = Server.CreateObject("ADODB.Connection")
Database.Open Application("Rk_ConnStr")
Database.BeginTrans
Database.Execute "Insert Into Rk_News (Title) Values ('order')"
Set Site = Server.CreateObject("Rkclient.SiteMain")
Site.WriteMoneyLog "ann", "buy", -9.5, 99.5, 990.5, "part of the order"
If Request.QueryString("end") = "commit" Then
    Database.CommitTrans
ElseIf Request.QueryString("end") = "rollback" Then
    Database.RollbackTrans
End If
Database.Close
Response.Write "done"
%>
