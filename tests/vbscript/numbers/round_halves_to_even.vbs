Print Round(0.5), Round(1.5), Round(2.5), Round(-2.5), Round(2.567, 2) ' expect: 0 2 2 -2 2.57
