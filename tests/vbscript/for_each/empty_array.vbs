For Each v In Array()
  Print "never"
Next
Print "done" ' expect: done
