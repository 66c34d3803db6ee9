Print IsEmpty(neverUsed) ' expect: True
