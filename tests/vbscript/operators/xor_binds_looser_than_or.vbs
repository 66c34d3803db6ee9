Print True Xor True Or True ' expect: False
