Print ScriptEngine, ScriptEngineMajorVersion, ScriptEngineMinorVersion ' expect: VBScript 5 8
