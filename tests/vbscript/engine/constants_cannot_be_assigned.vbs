vbCrLf = "x" ' error: 501
