Print CBool("true"), CBool("False"), CBool("1") ' expect: True False True
