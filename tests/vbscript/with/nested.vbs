With Toy
  With .Self
    Print .Count ' expect: 3
  End With
  Print .Value ' expect: 7
End With
