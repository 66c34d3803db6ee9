<%@ CodePage=65001 %><%
' A page of the usual kind: backs up its database, writes on, and puts the copy back.
Set fso = Server.CreateObject("Scripting.FileSystemObject")
mdb = Server.MapPath("data/shop.mdb") : bak = Server.MapPath("data/bak.mdb")

Function opened()
  Set opened = Server.CreateObject("ADODB.Connection")
  opened.Open "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" & mdb
End Function
Sub write_word(word)
  Dim cn : Set cn = opened()
  cn.Execute "Insert Into words (word) Values ('" & word & "')"
  cn.Close
End Sub
Function words()
  Dim cn, rs : Set cn = opened()
  Set rs = cn.Execute("Select word From words Order By id")
  Do Until rs.EOF : words = words & rs(0) & " " : rs.MoveNext : Loop
  rs.Close : cn.Close
End Function

write_word "one"
If fso.FileExists(mdb) Then fso.CopyFile mdb, bak
write_word "two"
Response.Write "before: " & words() & vbLf
fso.CopyFile bak, mdb, True
Response.Write "put back: " & words() & vbLf
write_word "three"
fso.DeleteFile mdb
fso.CopyFile bak, mdb
Response.Write "removed and put back: " & words() & vbLf
On Error Resume Next
Set upload = Server.CreateObject("ADODB.Stream")
upload.Type = 2 : upload.Charset = "utf-8" : upload.Open : upload.WriteText "not a database"
upload.SaveToFile mdb, 2
If Err.Number <> 0 Then Response.Write "an upload over it: refused" & vbLf
Err.Clear
fso.CreateTextFile(mdb & "-wal", True).Write "x"
If Err.Number <> 0 Then Response.Write "a side file: refused" & vbLf
On Error GoTo 0
Response.Write "after all: " & words() & vbLf
%>
