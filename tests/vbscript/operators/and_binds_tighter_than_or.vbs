Print True Or False And False ' expect: True
