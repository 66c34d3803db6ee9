x = 1
x = x + 2 * 3
Print x            ' expect: 7
Print "a" & x & "b"    ' expect: a7b
Sub foo(a, b)
  a = a + b
End Sub
y = 5
foo y, 3
Print y     ' expect: 8
foo (y), 3
Print y     ' expect: 8
Function fib(n)
  If n < 2 Then
    fib = n
  Else
    fib = fib(n-1) + fib(n-2)
  End If
End Function
Print fib(15)   ' expect: 610
Dim a(3)
For i = 0 To 3
  a(i) = i * i
Next
Print Join(a, ",")   ' expect: 0,1,4,9
s = ""
For Each v In a
  s = s & v & ";"
Next
Print s     ' expect: 0;1;4;9;
Class P
  Public Name
  Private m_x
  Private Sub Class_Initialize
    m_x = 10
  End Sub
  Property Get X
    X = m_x
  End Property
  Property Let X(v)
    m_x = v
  End Property
  Function Twice()
    Twice = X * 2
  End Function
  Private Sub Class_Terminate
    Print "bye"
  End Sub
End Class
Set p1 = New P
p1.X = 21
p1.Name = "n"
Print p1.Twice, p1.Name, p1.X   ' expect: 42 n 21
Set p1 = Nothing   ' expect: bye
On Error Resume Next
z = 1 / 0
Print Err.Number, Err.Description    ' expect: 11 Division by zero
On Error Goto 0
Select Case x
  Case 1, 2
    Print "no"
  Case 7
    Print "seven"    ' expect: seven
  Case Else
    Print "else"
End Select
Do While x > 5
  x = x - 1
Loop
Print x   ' expect: 5
Execute "q = 5 : Print q + x"    ' expect: 10
Print Eval("x * 3")   ' expect: 15
Print Rnd, Rnd   ' expect: 0.7055475 0.533424
With Toy
  Print .Add(1, 2)    ' expect: 3
End With
Print q   ' expect: 5
t = "abc" : t = t & "d" & 1
Print t, Len(t), Mid(t, 2, 2)   ' expect: abcd1 5 bc
ReDim d(2)
ReDim Preserve d(5)
Print UBound(d)  ' expect: 5
foo 1    ' error: 450
