Print AscW(ChrW(&HFF21)), AscW(ChrW(65313)) ' expect: -223 -223
