Date = 1 ' error: 501
