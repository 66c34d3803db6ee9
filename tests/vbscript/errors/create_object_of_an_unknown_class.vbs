Set x = CreateObject("No.Such") ' error: 429
