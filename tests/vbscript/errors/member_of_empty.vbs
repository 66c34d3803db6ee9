Dim x
Print x.Foo ' error: 424
