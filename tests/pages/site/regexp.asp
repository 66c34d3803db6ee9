<%
Set re = Server.CreateObject("VBScript.RegExp")
re.Pattern = "(\w+)@(\w+)\.example"
re.Global = True
re.IgnoreCase = True
For Each found In re.Execute("ann@One.example, bob@two.EXAMPLE")
  Response.Write found.SubMatches(0) & " of " & found.SubMatches(1) & vbCrLf
Next
Response.Write re.Replace("ann@one.example", "$2") & " " & TypeName(CreateObject("VBScript.RegExp")) & " " & TypeName(re)
%>
