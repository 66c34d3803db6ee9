Print CCur("12.34567"), CCur(-0.00005) ' expect: 12.3457 0
