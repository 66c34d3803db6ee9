Print CDate("xyz") ' error: 13
