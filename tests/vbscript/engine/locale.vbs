old = SetLocale(1033)
Print GetLocale ' expect: 1033
SetLocale "zh-cn"
Print GetLocale ' expect: 2052
