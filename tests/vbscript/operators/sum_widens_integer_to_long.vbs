Print 32767 + 1, TypeName(32767 + 1) ' expect: 32768 Long
