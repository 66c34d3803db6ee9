If 5 Then Print "five" ' expect: five
If 0.5 Then Print "half" ' expect: half
