For Each x In "abc" ' error: 451
Next
