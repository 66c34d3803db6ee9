one
<% x = 1 / 0 %>
