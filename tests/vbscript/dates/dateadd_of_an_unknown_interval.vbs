Print DateAdd("x", 1, Now) ' error: 5
