Print "" & True & " " & #2024-03-05# ' expect: True 2024-03-05
