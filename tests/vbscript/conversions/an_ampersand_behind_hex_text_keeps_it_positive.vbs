Print CLng("&HFFFF&"), CLng("&HFFFF") ' expect: 65535 -1
