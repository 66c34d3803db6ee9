x = 5
x.Foo ' error: 424
