For Each o In Array(Toy, Toy)
  s = s & o.Count
Next
Print s ' expect: 33
