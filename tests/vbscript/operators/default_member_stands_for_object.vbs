Print Toy + 1, Toy & "!", Toy = 7 ' expect: 8 7! True
