Print TypeName(#2024-01-03# - #2024-01-01#), #2024-01-03# - #2024-01-01# ' expect: Double 2
