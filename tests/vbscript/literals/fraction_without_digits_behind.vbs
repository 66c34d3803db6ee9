Print 5., TypeName(5.) ' expect: 5 Double
