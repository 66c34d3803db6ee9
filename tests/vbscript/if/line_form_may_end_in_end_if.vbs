If True Then Print "x" End If ' expect: x
