Print 1 =< 2, 2 => 1, 1 >< 2 ' expect: True True True
