Print 200 * 200, TypeName(200 * 200) ' expect: 40000 Long
