Print False Eqv True Xor True ' expect: True
