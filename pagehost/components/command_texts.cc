#include "pagehost/components/command_texts.h"

#include <algorithm>
#include <string>
#include <vector>

#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool is_bracketed(std::string_view text) {
  return text.front() == '[' && text.find(']') == text.size() - 1;
}

bool is_letter(char c) {
  return c == '_' || (c >= '0' && c <= '9') || (ascii_lower(c) >= 'a' && ascii_lower(c) <= 'z') ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool begins_with_word(std::string_view text, std::string_view word) {
  const std::size_t first = text.find_first_not_of(" \t\r\n(");
  if (first == std::string_view::npos || text.size() - first < word.size()) return false;
  if (!equal_ignoring_case(text.substr(first, word.size()), word)) return false;
  return text.size() == first + word.size() || !is_letter(text[first + word.size()]);
}

// Whether a "?" stands outside of quoted texts and names.
bool has_marks(std::string_view text) {
  char closing = 0;
  for (const char c : text) {
    if (closing != 0) {
      if (c == closing) closing = 0;
    } else if (c == '\'' || c == '"' || c == '[') {
      closing = c == '[' ? ']' : c;
    } else if (c == '?') {
      return true;
    }
  }
  return false;
}

// The name that a refused statement has no value for, as the error's text quotes it.
std::string missing_name(const ScriptError& error) {
  if (error.number() != errors::kSqlMissingColumn) return {};
  const std::string& text = error.description();
  const std::size_t first = text.find('\'');
  const std::size_t last = text.find('\'', first + 1);
  if (first == std::string::npos || last == std::string::npos) return {};
  return text.substr(first + 1, last - first - 1);
}

// Where the name first stands as a whole word.
std::size_t place_of(std::string_view text, std::string_view name) {
  for (std::size_t i = 0; i + name.size() <= text.size(); ++i) {
    if (!equal_ignoring_case(text.substr(i, name.size()), name)) continue;
    const std::size_t end = i + name.size();
    if ((i == 0 || !is_letter(text[i - 1])) && (end == text.size() || !is_letter(text[end]))) {
      return i;
    }
  }
  return text.size();
}

platform::SqlText with_clause(const platform::SqlText& sql, const std::vector<std::string>& names) {
  platform::SqlText out;
  for (const std::string& name : names) {
    // The type is of no effect: each value is bound as what it is.
    out.add(&name == &names.front() ? "Parameters [" : ",[").add(name).add("] Text");
  }
  out.add(";").add(sql.text());
  for (const Value& value : sql.values()) out.bind(value);
  return out;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

platform::SqlText statement_of(const platform::SqlText& text, std::int32_t options) {
  const std::string_view source = trimmed(text.text());
  if (source.empty()) return text;
  const bool named = has_option(options, kCommandTable | kCommandTableDirect);
  const bool bracketed = is_bracketed(source);
  const bool one_word = source.find_first_of(" \t\r\n;(") == std::string_view::npos;
  if (!named && !bracketed && !one_word) return text;
  platform::SqlText out("Select * From ");
  return bracketed ? out.add(source) : out.add("[").add(source).add("]");
}

bool begins_as_select(std::string_view text) {
  return begins_with_word(text, "select");
}

void naming_parameters(platform::SqlText& sql, const std::function<void()>& step) {
  if (sql.values().empty() || has_marks(sql.text()) || begins_with_word(sql.text(), "parameters")) {
    return step();
  }
  const platform::SqlText given = sql;
  std::vector<std::string> names;
  for (;;) {
    try {
      return step();
    } catch (const ScriptError& error) {  // passed on where it is not about a name
      const std::string name = missing_name(error);
      const bool known = std::find(names.begin(), names.end(), name) != names.end();
      if (name.empty() || known || names.size() == given.values().size()) throw;
      names.push_back(name);
    }
    std::sort(names.begin(), names.end(), [&](const std::string& a, const std::string& b) {
      return place_of(given.text(), a) < place_of(given.text(), b);
    });
    sql = with_clause(given, names);
  }
}

}  // namespace rk::pagehost
