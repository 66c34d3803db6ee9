<%@ Language="VBScript" CodePage="65001" %>
<%
' The page that bench/http measures. It stays as it is: figures of different days are compared.
Dim Site
Set Site = Server.CreateObject("Rkclient.SiteMain")
%><!DOCTYPE html>
<html lang="zh-CN">
<head>
<meta charset="utf-8">
<title>虚拟主机</title>
</head>
<body>
<h1>虚拟主机</h1>
<%= Site.Show_HostList("", "0", "4", "</ul><ul>", "Id", "26", "30", "20", "") %>
</body>
</html>
