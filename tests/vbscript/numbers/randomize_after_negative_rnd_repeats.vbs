Rnd -1
Randomize 42
a = Rnd
Rnd -1
Randomize 42
Print a = Rnd ' expect: True
