Print .Count ' error: 505
