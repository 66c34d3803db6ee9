Print &HFF, &h10, &HFFFF, &H8000 ' expect: 255 16 -1 -32768
