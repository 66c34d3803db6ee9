Print Rate ' expect: 0.5
Const Rate = 0.5
