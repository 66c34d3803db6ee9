Print False Imp False Eqv True ' expect: True
