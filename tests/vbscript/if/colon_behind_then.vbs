If True Then : Print 1 : End If ' expect: 1
