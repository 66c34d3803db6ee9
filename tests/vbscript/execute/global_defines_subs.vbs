ExecuteGlobal "Sub Say(s) : Print s : End Sub"
Say "hello" ' expect: hello
