Print Mid("中文网页", 2, 2), Left("中文", 1), Right("中文", 1) ' expect: 文网 中 文
