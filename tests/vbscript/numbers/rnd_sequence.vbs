Print Rnd ' expect: 0.7055475
Print Rnd ' expect: 0.533424
Print Rnd(1) ' expect: 0.5795186
Print Rnd(0) ' expect: 0.5795186
