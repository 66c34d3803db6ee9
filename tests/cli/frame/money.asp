<%
On Error Resume Next
Set Site = Server.CreateObject("Rkclient.SiteMain")
For Each money In Array("x", Empty, Null, 1E20, True, "12.5", -3, Array(1))
    Err.Clear
    Site.WriteMoneyLog "ann", "buy", money, 0, 0, "it's"
    Response.Write TypeName(money) & ": " & Hex(Err.Number) & vbCrLf
Next
%>
