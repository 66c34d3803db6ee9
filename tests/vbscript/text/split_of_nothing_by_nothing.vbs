Print UBound(Split("", "")), UBound(Split(",", ",")) ' expect: -1 1
