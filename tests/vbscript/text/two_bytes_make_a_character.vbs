Print ChrB(&H2D) & ChrB(&H4E) ' expect: 中
