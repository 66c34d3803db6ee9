For Each v In 5 ' error: 451
Next
