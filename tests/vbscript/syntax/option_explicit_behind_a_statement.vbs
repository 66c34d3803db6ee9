Dim x
Option Explicit ' syntax error: 1024 line 2 column 1
