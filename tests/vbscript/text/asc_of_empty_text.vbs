Print Asc("") ' error: 5
