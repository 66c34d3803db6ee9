#include "adapters/posix/ini_text.h"

#include <algorithm>

#include "value/text.h"

namespace rk::posix {

namespace {

bool is_blank(char c) {
  return c == ' ' || c == '\t';
}

std::string_view without_leading_blanks(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  return text;
}

std::string_view trimmed(std::string_view text) {
  text = without_leading_blanks(text);
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

// The names that lines are compared with.
class Names {
 public:
  Names(std::string_view section, std::string_view key, const LeadBytes& lead_bytes)
      : section_(trimmed(section)), key_(trimmed(key)), lead_bytes_(lead_bytes) {}

  static bool is_header(std::string_view line) {
    return without_leading_blanks(line).starts_with('[');
  }
  // Of a header.
  bool is_section(std::string_view line) const {
    line = trimmed(line).substr(1);
    const std::string_view name = trimmed(line.substr(0, closing_bracket(line)));
    return name.size() == section_.size() && begins_with(name, section_);
  }
  bool is_key(std::string_view line) const {
    line = without_leading_blanks(line);
    if (line.starts_with(';') || !begins_with(line, key_)) return false;
    // What a key's line holds before its first "=" is its name, so a name cannot hold one.
    return key_.find('=') == std::string_view::npos &&
           without_leading_blanks(line.substr(key_.size())).starts_with('=');
  }

 private:
  bool is_lead(char byte) const { return lead_bytes_[static_cast<unsigned char>(byte)]; }

  std::size_t closing_bracket(std::string_view line) const {
    std::size_t at = 0;
    while (at < line.size() && line[at] != ']') at += is_lead(line[at]) ? 2 : 1;
    return std::min(at, line.size());
  }

  bool begins_with(std::string_view text, std::string_view name) const {
    if (text.size() < name.size()) return false;
    for (std::size_t i = 0; i < name.size(); ++i) {
      if (is_lead(name[i]) && i + 1 < name.size()) {
        if (text.substr(i, 2) != name.substr(i, 2)) return false;
        ++i;
      } else if (ascii_lower(text[i]) != ascii_lower(name[i])) {
        return false;
      }
    }
    return true;
  }

  std::string_view section_;
  std::string_view key_;
  const LeadBytes& lead_bytes_;
};

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

Place place_of(std::string_view text, const Names& names) {
  Place place;
  Lines lines(text);
  while (const auto line = lines.next()) {
    if (Names::is_header(line->text)) {
      if (place.section) {
        place.section_end = line->begin;
        return place;
      }
      if (names.is_section(line->text)) {
        place.section = true;
        place.section_begin = line->begin;
        place.last_line_end = line->begin + line->text.size();
      }
      continue;
    }
    if (!place.section) continue;
    if (!trimmed(line->text).empty()) place.last_line_end = line->begin + line->text.size();
    if (!place.key && names.is_key(line->text)) place.key = *line;
  }
  place.section_end = text.size();
  return place;
}

// The line of a key alone: reading needs no more, and stops at it.
std::optional<std::string_view> key_line(std::string_view text, const Names& names) {
  bool inside = false;
  Lines lines(text);
  while (const auto line = lines.next()) {
    if (Names::is_header(line->text)) {
      if (inside) return std::nullopt;
      inside = names.is_section(line->text);
    } else if (inside && names.is_key(line->text)) {
      return line->text;
    }
  }
  return std::nullopt;
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
                                     std::string_view key, const LeadBytes& lead_bytes) {
  const auto line = key_line(text, Names(section, key, lead_bytes));
  if (!line) return std::nullopt;
  return std::string(without_quotes(trimmed(line->substr(line->find('=') + 1))));
}

std::string ini_text_with(std::string_view text, std::string_view section,
                          std::optional<std::string_view> key,
                          std::optional<std::string_view> value, const LeadBytes& lead_bytes) {
  const Place place = place_of(text, Names(section, key.value_or(""), lead_bytes));
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
