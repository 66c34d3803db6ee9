Print CStr(1.5), CStr(True), CStr(#2024-03-05#), CStr(1E20), CStr(0.1) ' expect: 1.5 True 2024-03-05 1E+20 0.1
