<%
Set connection = Server.CreateObject("ADODB.Connection")
connection.Open Application("Rk_ConnStr")
Set rows = connection.Execute("Select Id From Toy Order By Id")
Do Until rows.EOF
    Set name = connection.Execute("Select Name From Toy Where Id=" & rows("Id"))
    Response.Write name("Name") & ";"
    name.Close
    rows.MoveNext
Loop
rows.Close
connection.Close
%>
