Print 1 Is Nothing ' error: 424
