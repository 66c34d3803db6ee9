Set x = Nothing
x.Foo ' error: 424
