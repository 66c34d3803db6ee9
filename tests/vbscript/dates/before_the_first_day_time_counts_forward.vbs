Print CDate(-1.25) ' expect: 1899-12-29 06:00:00
