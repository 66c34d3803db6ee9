Print Sin(0), Cos(0), Tan(0), Round(Atn(1) * 4, 5) ' expect: 0 1 0 3.14159
