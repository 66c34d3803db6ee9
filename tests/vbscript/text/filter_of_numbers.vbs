Print Join(Filter(Array(1, 12, 3), "1"), ",") ' expect: 1,12
