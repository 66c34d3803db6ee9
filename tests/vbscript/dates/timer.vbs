Print Timer ' expect: 52215
