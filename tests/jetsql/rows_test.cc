// Rows "Jet text -> SQLite text, values, result" out of rows/*.test. A row is
//
//   the Jet text (lines are joined with a blank)
//   ----
//   one line for each SQLite statement
//   = the values bound, with a comma between; texts in quotes
//   > one line for each row of the result when it is run
//
// A line "then TEXT" in front of the dashes is a second Jet text, run behind the first: its rows
// are the result. For a text that is refused "! number text" stands behind the dashes, its text may
// be left out. "#" begins a comment line, an empty line ends the row, "@ FILE.sql" names the
// database.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/jetsql/engine.h"

namespace rk::jetsql {
namespace {

struct Row {
  std::string file;
  int line = 0;
  std::string database;
  std::string given;
  std::string then;
  std::string expected;
};

std::vector<Row> rows_of(const std::string& path) {
  std::ifstream file(path);
  std::vector<Row> rows;
  Row row;
  bool behind_dashes = false;
  std::string database;
  std::string line;
  int number = 0;
  const auto finish = [&] {
    if (!row.given.empty()) rows.push_back(row);
    row = Row();
    behind_dashes = false;
  };
  while (std::getline(file, line)) {
    ++number;
    if (line.empty()) {
      finish();
    } else if (line[0] == '#' && row.given.empty()) {
      continue;
    } else if (line.rfind("@ ", 0) == 0) {
      database = line.substr(2);
    } else if (line == "----") {
      behind_dashes = true;
    } else if (behind_dashes) {
      row.expected += line + "\n";
    } else if (line.rfind("then ", 0) == 0) {
      row.then = line.substr(5);
    } else {
      if (row.given.empty()) row.line = number;
      row.given += (row.given.empty() ? "" : " ") + line;
      row.file = std::filesystem::path(path).filename().string();
      row.database = database;
    }
  }
  finish();
  return rows;
}

std::string value_text(const Literal& value) {
  switch (value.kind) {
    case Literal::Kind::Integer:
      return std::to_string(value.integer);
    case Literal::Kind::Double:
      return number_text(value.number);
    case Literal::Kind::Text:
      return "'" + value.text + "'";
    default:
      return "Null";
  }
}

// What the row should say, by what the translator does now.
std::string found(const Row& row) {
  Engine engine(file_text(std::string(RK_SOURCE_DIR) + "/tests/jetsql/" + row.database));
  std::string text;
  try {
    const Engine::Run run = engine.run(row.given);
    for (const std::string& statement : run.translation.statements) text += statement + "\n";
    std::string values;
    for (const Literal& value : run.values)
      values += (values.empty() ? "= " : ", ") + value_text(value);
    if (!values.empty()) text += values + "\n";
    const std::vector<std::string> rows = row.then.empty() ? run.rows : engine.run(row.then).rows;
    for (const std::string& result : rows) text += "> " + result + "\n";
  } catch (const SqlError& error) {
    text += "! " + std::to_string(error.number()) + " " + error.what() + "\n";
  }
  return text;
}

// A refusal may be given by its number alone.
bool agree(const std::string& expected, const std::string& actual) {
  if (expected == actual) return true;
  const bool number_alone =
      expected.rfind("! ", 0) == 0 && expected.find(' ', 2) == std::string::npos;
  if (!number_alone) return false;
  const std::string number = expected.substr(0, expected.size() - 1);
  return actual.rfind(number + " ", 0) == 0;
}

TEST(TranslatorRows, EveryRowComesOutAsWritten) {
  std::size_t count = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::string(RK_SOURCE_DIR) + "/tests/jetsql/rows")) {
    for (const Row& row : rows_of(entry.path().string())) {
      if (row.expected.rfind("! ", 0) != 0) ++count;  // a text that is translated
      std::string actual;
      try {
        actual = found(row);
      } catch (const std::exception& error) {
        actual = std::string("? ") + error.what() + "\n";
      }
      EXPECT_TRUE(agree(row.expected, actual))
          << row.file << ":" << row.line << "\n"
          << row.given << (row.then.empty() ? "" : "\nthen " + row.then) << "\n----\n"
          << actual;
    }
  }
  EXPECT_GE(count, 400U);
}

}  // namespace
}  // namespace rk::jetsql
