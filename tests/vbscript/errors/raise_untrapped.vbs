Err.Raise vbObjectError + 5, "s", "d" ' error: -2147221499
