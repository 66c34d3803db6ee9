Print Year("2024-03-05"), Month("3/4/2024") ' expect: 2024 3
