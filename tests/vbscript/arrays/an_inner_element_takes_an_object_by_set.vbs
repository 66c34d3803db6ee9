c = Array(Array(1))
Set c(0)(0) = Toy
Print IsObject(c(0)(0)) ' expect: True
