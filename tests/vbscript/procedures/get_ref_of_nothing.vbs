Set f = GetRef("NoSuch") ' error: 5
