<%
Function Money(amount)
  Money = FormatNumber(amount, 2)
End Function
%><h1>Prices</h1>