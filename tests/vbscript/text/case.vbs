Print UCase("aBc1é"), LCase("ABcÉ") ' expect: ABC1É abcé
