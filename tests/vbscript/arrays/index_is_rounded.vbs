Dim a(3)
a(1.6) = "two"
Print a(2), a("2"), a(2.5) ' expect: two two two
