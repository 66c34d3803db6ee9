<!--#include file="inc\TOP.asp"-->
<%
name = "outer"
Server.Execute "shop/inner.asp"
Response.Write name & " " & Session("seen") & vbCrLf
On Error Resume Next
Server.Execute "shop/none.asp"
Response.Write Hex(Err.Number) & vbCrLf
Server.Transfer "/Shop/Inner.asp"
Response.Write "never"
%>
