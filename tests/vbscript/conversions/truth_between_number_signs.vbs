Print CBool("#TRUE#"), CBool("#false#") ' expect: True False
