Print Log(1), Exp(0), Round(Exp(1), 4) ' expect: 0 1 2.7183
