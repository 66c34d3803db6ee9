x = NoSuchThing(1) ' error: 13
