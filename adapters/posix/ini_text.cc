#include "adapters/posix/ini_text.h"

#include <algorithm>

#include "value/text.h"

namespace rk::posix {

namespace {

bool is_blank(char c) {
  return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && (is_blank(text.back()) || text.back() == '\r' || text.back() == '\n')) {
    text.remove_suffix(1);
  }
  return text;
}

// One line with its line end, and where it begins.
struct Line {
  std::string_view text;
  std::size_t begin;
};

class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) {}
  std::optional<Line> next() {
    if (at_ == text_.size()) return std::nullopt;
    const std::size_t begin = at_;
    const std::size_t end = text_.find('\n', begin);
    at_ = end == std::string_view::npos ? text_.size() : end + 1;
    return Line{text_.substr(begin, at_ - begin), begin};
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;
};

std::optional<std::string_view> section_name(std::string_view line) {
  line = trimmed(line);
  if (!line.starts_with('[')) return std::nullopt;
  return trimmed(line.substr(1, line.find(']') - 1));
}

bool has_key(std::string_view line, std::string_view key) {
  line = trimmed(line);
  if (line.starts_with(';')) return false;
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return false;
  return equal_ignoring_case(trimmed(line.substr(0, equals)), trimmed(key));
}

std::string_view without_quotes(std::string_view value) {
  if (value.size() < 2 || value.front() != value.back()) return value;
  if (value.front() != '"' && value.front() != '\'') return value;
  return value.substr(1, value.size() - 2);
}

// Where a section and a key of it lie in a text.
struct Place {
  bool section = false;
  std::size_t section_begin = 0;  // its header
  std::size_t section_end = 0;    // the next header or the end
  std::size_t last_line_end = 0;  // behind the section's last line that is not blank
  std::optional<Line> key;
};

Place place_of(std::string_view text, std::string_view section,
               std::optional<std::string_view> key) {
  Place place;
  Lines lines(text);
  while (const auto line = lines.next()) {
    if (const auto name = section_name(line->text)) {
      if (place.section) {
        place.section_end = line->begin;
        return place;
      }
      if (equal_ignoring_case(*name, trimmed(section))) {
        place.section = true;
        place.section_begin = line->begin;
        place.last_line_end = line->begin + line->text.size();
      }
      continue;
    }
    if (!place.section) continue;
    if (!trimmed(line->text).empty()) place.last_line_end = line->begin + line->text.size();
    if (key && !place.key && has_key(line->text, *key)) place.key = *line;
  }
  place.section_end = text.size();
  return place;
}

std::string line_end_of(std::string_view text) {
  const std::size_t at = text.find('\n');
  const bool bare = at != std::string_view::npos && (at == 0 || text[at - 1] != '\r');
  return bare ? "\n" : "\r\n";
}

std::string joined(std::string_view text, std::size_t begin, std::size_t end,
                   std::string_view inserted) {
  std::string result(text.substr(0, begin));
  result += inserted;
  result += text.substr(end);
  return result;
}

// A last line without an end gets one before anything is put behind it.
std::string ended(std::string_view text, std::string_view line_end) {
  std::string result(text);
  if (!result.empty() && result.back() != '\n') result += line_end;
  return result;
}

}  // namespace

std::optional<std::string> ini_value(std::string_view text, std::string_view section,
                                     std::string_view key) {
  const Place place = place_of(text, section, key);
  if (!place.key) return std::nullopt;
  const std::string_view line = place.key->text;
  return std::string(without_quotes(trimmed(line.substr(line.find('=') + 1))));
}

std::string ini_text_with(std::string_view text, std::string_view section,
                          std::optional<std::string_view> key,
                          std::optional<std::string_view> value) {
  const Place place = place_of(text, section, key);
  if (!key) {
    return place.section ? joined(text, place.section_begin, place.section_end, "")
                         : std::string(text);
  }
  if (!value) {
    if (!place.key) return std::string(text);
    return joined(text, place.key->begin, place.key->begin + place.key->text.size(), "");
  }
  const std::string line_end = line_end_of(text);
  std::string line(trimmed(*key));
  line += '=';
  line += *value;
  line += line_end;
  if (place.key) {
    return joined(text, place.key->begin, place.key->begin + place.key->text.size(), line);
  }
  if (place.section) {
    const std::string head = ended(text.substr(0, place.last_line_end), line_end);
    return head + line + std::string(text.substr(place.last_line_end));
  }
  std::string result = ended(text, line_end);
  result += '[';
  result += trimmed(section);
  result += ']';
  return result + line_end + line;
}

}  // namespace rk::posix
