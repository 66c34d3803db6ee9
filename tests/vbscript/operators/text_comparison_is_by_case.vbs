Print "a" = "A", "a" > "B" ' expect: False True
