#include "adapters/sqlite/connection_string.h"

#include <vector>

#include "value/script_error.h"
#include "value/text.h"

namespace rk::sqlite {
namespace {

struct Pair {
  std::string keyword;
  std::string value;
};

[[noreturn]] void refuse(const std::string& text) {
  raise_database_error(errors::kSqlFailure, "Connection string: " + text);
}

bool blank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

class PairReader {
 public:
  explicit PairReader(std::string_view text) : rest_(text) {}

  bool next(Pair& pair) {
    while (!rest_.empty() && (blank(rest_.front()) || rest_.front() == ';')) rest_.remove_prefix(1);
    if (rest_.empty()) return false;
    pair.keyword = keyword();
    pair.value = value();
    return true;
  }

 private:
  std::string keyword() {
    const std::size_t equals = rest_.find_first_of("=;");
    const std::string_view word = trimmed(rest_.substr(0, equals));
    if (equals == std::string_view::npos || rest_[equals] == ';') {
      refuse("\"=\" expected behind \"" + std::string(word) + "\"");
    }
    if (word.empty()) refuse("a keyword expected before \"=\"");
    rest_.remove_prefix(equals + 1);
    return std::string(word);
  }

  std::string value() {
    while (!rest_.empty() && blank(rest_.front())) rest_.remove_prefix(1);
    if (rest_.empty()) return {};
    switch (rest_.front()) {
      case '\'':
      case '"':
        return enclosed(rest_.front());
      case '{':
        return enclosed('}');
      default:
        break;
    }
    const std::size_t end = rest_.find(';');
    const std::string_view plain = trimmed(rest_.substr(0, end));
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end);
    return std::string(plain);
  }

  std::string enclosed(char closing) {
    std::string inner;
    for (std::size_t at = 1; at < rest_.size(); ++at) {
      if (rest_[at] != closing) {
        inner += rest_[at];
      } else if (at + 1 < rest_.size() && rest_[at + 1] == closing) {
        inner += rest_[at++];
      } else {
        rest_.remove_prefix(at + 1);
        leave_value();
        return inner;
      }
    }
    refuse(std::string("the closing ") + closing + " of a value is missing");
  }

  void leave_value() {
    while (!rest_.empty() && blank(rest_.front())) rest_.remove_prefix(1);
    if (!rest_.empty() && rest_.front() != ';') refuse("\";\" expected behind a quoted value");
  }

  std::string_view rest_;
};

struct Keywords {
  std::string driver, dsn, dbq, database, data_source, mode;
};

Keywords read_keywords(std::string_view text) {
  Keywords words;
  PairReader reader(text);
  for (Pair pair; reader.next(pair);) {
    const std::string name = lowered_ascii(pair.keyword);
    // The last of a keyword given twice counts. What is not named here (a provider, an account,
    // Jet's own options) has no meaning for a file.
    if (name == "driver") words.driver = pair.value;
    if (name == "dsn") words.dsn = pair.value;
    if (name == "dbq") words.dbq = pair.value;
    if (name == "database") words.database = pair.value;
    if (name == "data source") words.data_source = pair.value;
    if (name == "mode") words.mode = pair.value;
  }
  return words;
}

bool is_access(std::string_view driver) {
  return lowered_ascii(driver).find("access") != std::string::npos;
}

bool is_sqlite(std::string_view driver) {
  return lowered_ascii(driver).find("sqlite") != std::string::npos;
}

// What the driver's own keyword names, where the driver is one of those read as a file.
std::string data_source_of(const Keywords& words) {
  if (!words.dsn.empty()) {
    refuse("DSN=" + words.dsn + " names an ODBC data source, not a file");
  }
  if (words.driver.empty()) {
    if (words.data_source.empty()) refuse("it has no Data Source=FILE");
    return words.data_source;
  }
  if (is_access(words.driver)) {
    if (words.dbq.empty()) refuse("the Access driver needs DBQ=FILE");
    return words.dbq;
  }
  if (is_sqlite(words.driver)) {
    if (words.database.empty()) refuse("the SQLite driver needs Database=FILE");
    return words.database;
  }
  refuse("Driver={" + words.driver + "} is an ODBC driver, and names no file");
}

OpenMode mode_of(std::string_view mode) {
  if (equal_ignoring_case(mode, "create")) return OpenMode::Create;
  if (equal_ignoring_case(mode, "read")) return OpenMode::Read;
  return OpenMode::ReadWrite;  // and the sharing modes, which a file does not need
}

}  // namespace

bool names_odbc_source(std::string_view text) {
  try {
    const Keywords words = read_keywords(text);
    if (!words.dsn.empty()) return true;
    return !words.driver.empty() && !is_access(words.driver) && !is_sqlite(words.driver);
  } catch (const ScriptError&) {  // told by parse_connection_string()
    return false;
  }
}

ConnectionString parse_connection_string(std::string_view text) {
  if (trimmed(text).empty()) refuse("it is empty (is Rk_ConnStr set?)");
  const Keywords words = read_keywords(text);
  return {data_source_of(words), mode_of(words.mode)};
}

}  // namespace rk::sqlite
