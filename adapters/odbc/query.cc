#include "adapters/odbc/query.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "value/text.h"

namespace rk::odbc {
namespace {

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool is_sign(char c) {
  return c == ',' || c == '(' || c == ')' || c == ';' || c == '=' || c == '*';
}

// The words of a text: names in quotes stand as one word without them, texts as "'", signs alone.
std::vector<std::string> words_of(std::string_view sql) {
  constexpr std::string_view kQuotes = "\"`[";
  std::vector<std::string> words;
  for (std::size_t at = 0; at < sql.size();) {
    const char c = sql[at];
    if (is_blank(c)) {
      ++at;
    } else if (c == '\'' || kQuotes.find(c) != std::string_view::npos) {
      const char closing = c == '[' ? ']' : c;
      const std::size_t end = std::min(sql.find(closing, at + 1), sql.size());
      words.emplace_back(c == '\'' ? "'" : sql.substr(at + 1, end - at - 1));
      at = end + 1;
    } else if (is_sign(c)) {
      words.emplace_back(1, c);
      ++at;
    } else {
      std::size_t end = at;
      while (end < sql.size() && !is_blank(sql[end]) && !is_sign(sql[end])) ++end;
      words.emplace_back(sql.substr(at, end - at));
      at = end;
    }
  }
  return words;
}

bool is_word(const std::vector<std::string>& words, std::size_t at, std::string_view word) {
  return at < words.size() && equal_ignoring_case(words[at], word);
}

}  // namespace

std::vector<Column> shown_columns(const Query& query, std::vector<Column> told) {
  if (!query.translated) return told;
  for (std::size_t i = 0; i < told.size() && i < query.shown.size(); ++i) {
    const Query::Shown& shown = query.shown[i];
    told[i].name = shown.name;
    told[i].base_table = shown.base_table;
    told[i].base_column = shown.base_column;
    if (shown.type == platform::ColumnType::Currency && told[i].fetch == Column::Fetch::Decimal) {
      told[i].type = shown.type;
    }
    if (shown.type == platform::ColumnType::Boolean && told[i].fetch == Column::Fetch::Text) {
      told[i].type = shown.type;
      told[i].fetch = Column::Fetch::Boolean;
    }
  }
  return told;
}

std::string table_of_text(std::string_view sql) {
  const std::vector<std::string> words = words_of(sql);
  constexpr std::string_view kMany[] = {"join",   "union",     "group",  "distinct", "having",
                                        "except", "intersect", "select", "from"};
  if (!is_word(words, 0, "select")) return {};
  std::size_t from = 0;
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (from == 0 && is_word(words, i, "from")) {
      from = i;
      continue;
    }
    for (const std::string_view word : kMany) {
      if (is_word(words, i, word)) return {};
    }
  }
  if (from == 0 || from + 1 >= words.size()) return {};
  constexpr std::string_view kBehind[] = {"where", "order", "limit", "for", ";"};
  if (from + 2 == words.size()) return words[from + 1];
  for (const std::string_view word : kBehind) {
    if (is_word(words, from + 2, word)) return words[from + 1];
  }
  return {};
}

}  // namespace rk::odbc
