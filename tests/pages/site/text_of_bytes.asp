<%@ CodePage="936" %><%
' What pages of uploads do: bytes become text in a record set's column of single-byte text.
Function TextOf(bytes, kind)
  Dim rs
  Set rs = CreateObject("ADODB.Recordset")
  rs.Fields.Append "text", kind, LenB(bytes)
  rs.Open
  rs.AddNew
  rs("text").AppendChunk bytes
  rs.Update
  TextOf = rs("text")
End Function

Set s = CreateObject("ADODB.Stream")
s.Type = 2: s.Charset = "gb2312": s.Open
s.WriteText "Pear " & ChrW(&H4E2D) & "!"
s.Position = 0: s.Type = 1
bytes = s.Read
s.Close
For Each kind In Array(201, 200, 129)
  t = TextOf(bytes, kind)
  Response.Write kind & ": " & Len(t) & " " & (t = "Pear " & ChrW(&H4E2D) & "!") & vbLf
Next
t = TextOf(bytes, 203)
Response.Write "203: " & Len(t) & " " & (AscW(t) = &H6550) & vbLf
%>
