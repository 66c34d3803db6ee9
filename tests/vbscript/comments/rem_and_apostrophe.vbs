Rem all of it
Print 1 ' expect: 1
: Rem behind a colon
Print 2 : Rem behind a statement ' expect: 2
