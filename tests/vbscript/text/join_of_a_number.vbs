Print Join(5) ' error: 13
