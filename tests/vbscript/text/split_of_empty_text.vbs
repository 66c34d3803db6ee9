Print UBound(Split("", ",")) ' expect: -1
