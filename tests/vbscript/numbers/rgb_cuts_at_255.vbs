Print RGB(300, 0, 0) ' expect: 255
