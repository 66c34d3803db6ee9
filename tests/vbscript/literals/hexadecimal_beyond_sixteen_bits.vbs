Print &H10000, TypeName(&H10000), &HFFFFFFFF ' expect: 65536 Long -1
