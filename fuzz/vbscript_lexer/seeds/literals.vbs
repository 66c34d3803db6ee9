x = &HFFFF& + &O17 - &17 * 1.5e-3 & "a ""b""" & #2024-03-05 14:30# _
  & [x y] ' 中
If i = 1Then y = .5Else Rem done
