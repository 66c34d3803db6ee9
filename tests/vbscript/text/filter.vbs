a = Array("apple", "banana", "Apricot")
Print Join(Filter(a, "ap"), ","), Join(Filter(a, "ap", False), ","), Join(Filter(a, "ap", True, 1), ",") ' expect: apple banana,Apricot apple,Apricot
