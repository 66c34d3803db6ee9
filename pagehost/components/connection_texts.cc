#include "pagehost/components/connection_texts.h"

#include "pagehost/components/command_texts.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

// Where the pair that begins at `from` ends: the next ";" outside of quotes and braces.
std::size_t end_of_pair(std::string_view text, std::size_t from) {
  char closing = 0;
  for (std::size_t i = from; i < text.size(); ++i) {
    const char c = text[i];
    if (closing != 0) {
      if (c == closing) closing = 0;
    } else if (c == '"' || c == '\'' || c == '{') {
      closing = c == '{' ? '}' : c;
    } else if (c == ';') {
      return i;
    }
  }
  return text.size();
}

std::string_view unquoted(std::string_view value) {
  if (value.size() < 2 || (value.front() != '"' && value.front() != '\'')) return value;
  return value.back() == value.front() ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

std::string connection_keyword(std::string_view connection_string, std::string_view keyword) {
  for (std::size_t from = 0; from < connection_string.size();) {
    const std::size_t end = end_of_pair(connection_string, from);
    const std::string_view pair = connection_string.substr(from, end - from);
    const std::size_t equals = pair.find('=');
    if (equals != std::string_view::npos &&
        equal_ignoring_case(trimmed(pair.substr(0, equals)), keyword)) {
      return std::string(unquoted(trimmed(pair.substr(equals + 1))));
    }
    from = end + 1;
  }
  return {};
}

std::string with_keyword(std::string_view connection_string, std::string_view keyword,
                         std::string_view value) {
  std::string out(connection_string);
  for (const std::string_view taken :
       {keyword, std::string_view("Driver"), std::string_view("DSN")}) {
    if (!connection_keyword(connection_string, taken).empty()) return out;
  }
  if (!out.empty() && out.back() != ';') out += ';';
  return out.append(keyword).append("=").append(value);
}

std::string connection_to_file(std::string_view text) {
  if (trimmed(text).empty() || text.find('=') != std::string_view::npos) return std::string(text);
  std::string out = "Data Source=\"";
  for (const char c : trimmed(text)) out.append(c == '"' ? 2 : 1, c);
  return out += '"';
}

bool names_saved_rows(std::string_view connection_string) {
  return is_saved_rows_provider(connection_keyword(connection_string, "Provider"));
}

bool is_saved_rows_provider(std::string_view provider) {
  return equal_ignoring_case(provider, "MSPersist");
}

}  // namespace rk::pagehost
