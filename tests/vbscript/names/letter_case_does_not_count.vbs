Dim Total
TOTAL = 3
Print total ' expect: 3
