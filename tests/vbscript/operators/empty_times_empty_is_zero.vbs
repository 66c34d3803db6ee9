Print TypeName(Empty * Empty), Empty * Empty ' expect: Integer 0
