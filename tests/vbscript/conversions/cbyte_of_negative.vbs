Print CByte(-1) ' error: 6
