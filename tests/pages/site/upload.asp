<%
' Cuts a form with files into its parts, by bytes, as upload classes do.
Function TextOf(bytes)
  Dim stream
  Set stream = Server.CreateObject("ADODB.Stream")
  stream.Type = 1
  stream.Open
  stream.Write bytes
  stream.Position = 0
  stream.Type = 2
  stream.Charset = "utf-8"
  TextOf = stream.ReadText
  stream.Close
End Function

Function BytesOf(text)
  Dim i, out
  For i = 1 To Len(text)
    out = out & ChrB(Asc(Mid(text, i, 1)))
  Next
  BytesOf = out
End Function

Function Quoted(head, word)
  Dim at
  at = InStr(head, word & "=""")
  If at = 0 Then Exit Function
  at = at + Len(word) + 2
  Quoted = Mid(head, at, InStr(at, head, """") - at)
End Function

Set whole = Server.CreateObject("ADODB.Stream")
whole.Type = 1
whole.Open
left_over = Request.TotalBytes
Do While left_over > 0
  part = Request.BinaryRead(100)
  whole.Write part
  left_over = left_over - LenB(part)
Loop
whole.Position = 0
data = whole.Read
mark = MidB(data, 1, InStrB(data, BytesOf(vbCrLf)) - 1)
gap = BytesOf(vbCrLf & vbCrLf)
at = 1
Do
  at = at + LenB(mark) + 2
  body = InStrB(at, data, gap)
  If body = 0 Then Exit Do
  size = InStrB(body, data, mark) - 2 - (body + 4)
  whole.Position = at - 1
  head = TextOf(whole.Read(body - at))
  at = body + 4
  If Quoted(head, "filename") = "" Then
    whole.Position = at - 1
    Response.Write Quoted(head, "name") & " = " & TextOf(whole.Read(size)) & vbCrLf
  Else
    Set copy = Server.CreateObject("ADODB.Stream")
    copy.Type = 1
    copy.Open
    whole.Position = at - 1
    whole.CopyTo copy, size
    copy.SaveToFile Server.MapPath("data/" & Quoted(head, "filename")), 2
    Set back = Server.CreateObject("ADODB.Stream")
    back.Type = 1
    back.Open
    back.LoadFromFile Server.MapPath("data/" & Quoted(head, "filename"))
    Response.Write Quoted(head, "filename") & " " & back.Size & " " & AscB(MidB(back.Read, 2, 1)) & vbCrLf
  End If
  at = at + size + 2
Loop
%>
