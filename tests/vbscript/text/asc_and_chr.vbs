Print Asc("A"), Chr(65), Asc("abc"), AscW("中"), ChrW(20013) ' expect: 65 A 97 20013 中
