Print Date + 1, TypeName(Date + 1), #2024-03-05# - 1 ' expect: 2024-03-06 Date 2024-03-04
