Print #14:30:00# ' expect: 14:30:00
