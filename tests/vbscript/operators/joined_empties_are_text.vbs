Print TypeName(Empty & Empty), Len(Empty & Empty) ' expect: String 0
