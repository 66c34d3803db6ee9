Err.Raise 0 ' error: 5
