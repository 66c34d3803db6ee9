Print Oct(8), Oct(-1) ' expect: 10 177777
