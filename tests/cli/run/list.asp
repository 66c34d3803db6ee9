<%
Set connection = Server.CreateObject("ADODB.Connection")
connection.Open Application("Rk_ConnStr")
Set rows = connection.Execute("Select Name From Toy " & vbCrLf & " Order By Id")
Do Until rows.EOF
    Response.Write rows("Name") & ";"
    rows.MoveNext
Loop
rows.Close
connection.Close
%>
