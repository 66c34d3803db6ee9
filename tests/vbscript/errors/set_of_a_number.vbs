Set x = 5 ' error: 424
