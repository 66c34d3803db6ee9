Print Round(1.5, -1) ' error: 5
