// The storefront's database and the texts of rows/storefront.test that are run (not refused), for
// the tests that do more with them than their rows say.
#pragma once

#include <string>
#include <vector>

#include "tests/jetsql/engine.h"

namespace rk::jetsql {

inline std::string storefront_database() {
  return file_text(std::string(RK_SOURCE_DIR) + "/tests/jetsql/storefront.sql");
}

inline std::vector<std::string> storefront_texts() {
  std::istringstream file(
      file_text(std::string(RK_SOURCE_DIR) + "/tests/jetsql/rows/storefront.test"));
  std::vector<std::string> texts;
  std::string line;
  std::string given;
  while (std::getline(file, line)) {
    if (line == "----") {
      std::string expected;
      std::getline(file, expected);
      if (!expected.empty() && expected[0] != '!') texts.push_back(given);
    } else if (!line.empty() && line[0] != '#' && line[0] != '@') {
      given = line;
    }
  }
  return texts;
}

}  // namespace rk::jetsql
