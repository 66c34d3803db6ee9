high = ChrW(&HD83D)
low = ChrW(&HDE00)
Print high & low & "!" ' expect: 😀!
Print Join(Array(high, low), "") ' expect: 😀
Print Replace(high & "x" & low, "x", "") ' expect: 😀
s = high
s = s & low & "?"
Print s ' expect: 😀?
