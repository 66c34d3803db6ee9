<!--#include virtual="/INC/Cart.asp"-->
<%
AddToCart "host", 2
AddToCart Request("item"), 1
AddToCart "host", 1
For Each name In Cart.Keys
  Response.Write name & " x " & Cart(name) & vbCrLf
Next
%>
<script language="VBScript" runat="Server">
Sub AddToCart(name, count)
  If name = "" Then Exit Sub
  If Cart.Exists(name) Then
    Cart(name) = Cart(name) + count
  Else
    Cart.Add name, count
  End If
  Session("cart_count") = Session("cart_count") + count
End Sub
</script>
<p><%= Session("cart_count") %> in all
