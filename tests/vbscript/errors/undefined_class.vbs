Set x = New NoSuchClass ' error: 506
