Print Replace("abcabc", "b", "X", 3) ' expect: caXc
