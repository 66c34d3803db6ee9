// Format: dates by letters, numbers by places, the formats that have names.
#include <cmath>
#include <cstdio>
#include <optional>

#include "jetsql/arguments.h"
#include "jetsql/days.h"
#include "jetsql/letters.h"
#include "jetsql/numbers.h"
#include "jetsql/text_format.h"
#include "jetsql/translate.h"

namespace rk::jetsql {

namespace {

using Kind = Argument::Kind;

struct NamedFormat {
  std::string_view name;
  std::string_view pattern;
};

constexpr NamedFormat kNamed[] = {
    {"general date", "c"},
    {"long date", "ddddd"},
    {"medium date", "ddddd"},
    {"short date", "ddddd"},
    {"long time", "hh:nn:ss"},
    {"medium time", "hh:nn"},
    {"short time", "hh:nn"},
    {"fixed", "0.00"},
    {"standard", "#,##0.00"},
    {"currency", "#,##0.00"},
    {"percent", "0.00%"},
    {"scientific", "0.00E+00"},
    {"yes/no", "\"Yes\";\"Yes\";\"No\""},
    {"true/false", "\"True\";\"True\";\"False\""},
    {"on/off", "\"On\";\"On\";\"Off\""},
};

constexpr std::string_view kMonths[] = {"January",   "February", "March",    "April",
                                        "May",       "June",     "July",     "August",
                                        "September", "October",  "November", "December"};
constexpr std::string_view kWeekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                          "Thursday", "Friday", "Saturday"};

std::string digits(int value, int width) {
  char text[16];
  const int size = std::snprintf(text, sizeof text, "%0*d", width, value);
  return std::string(text, static_cast<std::size_t>(size));
}

// What stands between quotes or behind a backslash goes out as it is; true where it was taken.
bool take_quoted(std::string_view pattern, std::size_t& at, std::string& out) {
  if (pattern[at] == '\\') {
    if (++at < pattern.size()) out += pattern[at++];
    return true;
  }
  if (pattern[at] != '"') return false;
  const std::size_t end = pattern.find('"', at + 1);
  out += pattern.substr(at + 1, end == std::string_view::npos ? end : end - at - 1);
  at = end == std::string_view::npos ? pattern.size() : end + 1;
  return true;
}

// Which letters and places stand in a pattern outside its quotes.
struct PatternKind {
  bool date = false;
  bool number = false;
  bool half_day = false;
};

PatternKind kind_of(std::string_view pattern) {
  PatternKind kind;
  std::string ignored;
  for (std::size_t at = 0; at < pattern.size();) {
    if (take_quoted(pattern, at, ignored)) continue;
    const char c = lower(pattern[at]);
    if (c == '0' || c == '#') kind.number = true;
    if (std::string_view("ymdhnsqwct").find(c) != std::string_view::npos) kind.date = true;
    if (same_letters(pattern.substr(at, 5), "am/pm") ||
        same_letters(pattern.substr(at, 3), "a/p")) {
      kind.half_day = true;
    }
    ++at;
  }
  return kind;
}

class DateFormat {
 public:
  DateFormat(double days, std::string_view pattern)
      : days_(days),
        moment_(moment_of(days)),
        pattern_(pattern),
        half_day_(kind_of(pattern).half_day) {
    day_ = day_number(moment_.year, moment_.month, moment_.day);
  }

  std::string text() {
    for (std::size_t at = 0; at < pattern_.size();) {
      if (take_quoted(pattern_, at, out_)) continue;
      if (half_day_mark(at)) continue;
      const char c = lower(pattern_[at]);
      std::size_t end = at;
      while (end < pattern_.size() && lower(pattern_[end]) == c) ++end;
      const std::size_t taken = letters(c, end - at);
      if (taken == 0) out_ += pattern_[at];
      at += taken == 0 ? 1 : taken;
    }
    return out_;
  }

 private:
  bool half_day_mark(std::size_t& at) {
    const bool afternoon = moment_.hour >= 12;
    if (same_letters(pattern_.substr(at, 5), "am/pm")) {
      out_ += pattern_.substr(at + (afternoon ? 3 : 0), 2);
      at += 5;
      return true;
    }
    if (!same_letters(pattern_.substr(at, 3), "a/p")) return false;
    out_ += pattern_[at + (afternoon ? 2 : 0)];
    at += 3;
    return true;
  }

  // Writes for a run of one letter; the number of letters that it took.
  std::size_t letters(char c, std::size_t run) {
    const bool wide = run >= 2;
    const std::size_t two = wide ? 2 : 1;
    const bool after_hour = after_hour_;
    if (is_letter(c)) after_hour_ = c == 'h';
    switch (c) {
      case 'y':
        return year(run);
      case 'm':
        if (run <= 2 && after_hour) return number(moment_.minute, two);
        return month(run);
      case 'd':
        return day(run);
      case 'h':
        return number(half_day_ ? (moment_.hour + 11) % 12 + 1 : moment_.hour, two);
      case 'n':
        return number(moment_.minute, two);
      case 's':
        return number(moment_.second, two);
      case 'q':
        return number((moment_.month + 2) / 3, 1);
      case 'w':
        return week(run);
      case 'c':
        out_ += date_text(days_);
        return 1;
      case 't':
        if (run < 5) return 0;
        out_ += digits(moment_.hour, 2) + ":" + digits(moment_.minute, 2) + ":" +
                digits(moment_.second, 2);
        return 5;
      default:
        return 0;
    }
  }

  std::size_t number(int value, std::size_t width) {
    out_ += digits(value, static_cast<int>(width));
    return width;
  }

  std::size_t year(std::size_t run) {
    if (run >= 4) return number(moment_.year, 4);
    if (run >= 2) {
      out_ += digits(moment_.year % 100, 2);
      return run;
    }
    return number(static_cast<int>(day_ - day_number(moment_.year, 1, 1) + 1), 1);
  }

  std::size_t month(std::size_t run) {
    if (run <= 2) return number(moment_.month, run);
    const std::string_view name = kMonths[moment_.month - 1];
    out_ += run == 3 ? name.substr(0, 3) : name;
    return run == 3 ? 3 : 4;
  }

  std::size_t day(std::size_t run) {
    if (run <= 2) return number(moment_.day, run);
    if (run >= 5) {
      out_ += date_text(days_of(day_, 0));
      return run;
    }
    const std::string_view name = kWeekdays[weekday_of(day_) - 1];
    out_ += run == 3 ? name.substr(0, 3) : name;
    return run;
  }

  std::size_t week(std::size_t run) {
    if (run == 1) return number(weekday_of(day_), 1);
    const std::int64_t new_year = day_number(moment_.year, 1, 1);
    out_ += std::to_string((day_ - new_year + weekday_of(new_year) - 1) / 7 + 1);
    return 2;
  }

  double days_;
  Moment moment_;
  std::string_view pattern_;
  bool half_day_;
  bool after_hour_ = false;
  std::int64_t day_ = 0;
  std::string out_;
};

// The section of a pattern for a number: positive; negative; zero.
std::string_view section_of(std::string_view pattern, double value, bool& signs) {
  std::string_view sections[3];
  int count = 0;
  std::size_t begin = 0;
  std::string ignored;
  for (std::size_t at = 0; at <= pattern.size() && count < 3;) {
    if (at == pattern.size() || pattern[at] == ';') {
      sections[count++] = pattern.substr(begin, at - begin);
      begin = ++at;
    } else if (!take_quoted(pattern, at, ignored)) {
      ++at;
    }
  }
  signs = value < 0;
  if (value < 0 && count > 1 && !sections[1].empty()) {
    signs = false;
    return sections[1];
  }
  if (value == 0 && count > 2 && !sections[2].empty()) return sections[2];
  return sections[0];
}

// What a section asks for: places before and behind the point, groups of thousands, percent.
struct Places {
  int whole = 0, least = 0, most = 0;
  int digits = 0;     // places before the point, optional ones too
  int thousands = 0;  // commas behind the last of them: the number is divided by 1000 for each
  int exponent = 0;   // places of the exponent; 0: none is asked for
  char exponent_mark = 0;
  bool exponent_plus = false;  // a "+" stands before one that is not negative
  bool point = false, groups = false, percent = false;
};

bool at_exponent(std::string_view section, std::size_t at) {
  return at + 2 < section.size() && lower(section[at]) == 'e' &&
         (section[at + 1] == '+' || section[at + 1] == '-') &&
         (section[at + 2] == '0' || section[at + 2] == '#');
}

std::size_t exponent_end(std::string_view section, std::size_t at) {
  at += 2;
  while (at < section.size() && (section[at] == '0' || section[at] == '#')) ++at;
  return at;
}

Places places_of(std::string_view section) {
  Places places;
  std::string ignored;
  int commas = 0;
  for (std::size_t at = 0; at < section.size();) {
    if (take_quoted(section, at, ignored)) continue;
    if (at_exponent(section, at)) {
      const std::size_t end = exponent_end(section, at);
      places.exponent = static_cast<int>(end - at) - 2;
      places.exponent_mark = section[at];
      places.exponent_plus = section[at + 1] == '+';
      at = end;
      continue;
    }
    const char c = section[at++];
    if (c == '.') places.point = true;
    if (c == '%') places.percent = true;
    if (c == ',' && !places.point && places.digits > 0) ++commas;
    if (c != '0' && c != '#') continue;
    if (!places.point) {
      places.groups = places.groups || commas > 0;
      commas = 0;
      ++places.digits;
      if (c == '0' || places.whole > 0) ++places.whole;
      continue;
    }
    ++places.most;
    if (c == '0') places.least = places.most;
  }
  places.thousands = commas;
  return places;
}

std::string number_in(double value, const Places& places) {
  constexpr int kMostPlaces = 30;
  char text[400];
  const int most = places.most < kMostPlaces ? places.most : kMostPlaces;
  // Halves go away from zero here, unlike in Round.
  const double scale = std::pow(10.0, most);
  const double scaled = std::fabs(value) * scale;
  const double rounded =
      scaled < 1e15 ? std::floor(scaled * (1 + 1e-15) + 0.5) / scale : std::fabs(value);
  const int size = std::snprintf(text, sizeof text, "%.*f", most, rounded);
  std::string made(text, static_cast<std::size_t>(size));
  std::string part;
  if (const std::size_t point = made.find('.'); point != std::string::npos) {
    part = made.substr(point + 1);
    made.resize(point);
  }
  while (static_cast<int>(part.size()) > places.least && part.back() == '0') part.pop_back();
  if (made == "0" && places.whole == 0) made.clear();
  while (static_cast<int>(made.size()) < places.whole) made.insert(made.begin(), '0');
  for (std::size_t at = made.size(); places.groups && at > 3; at -= 3) made.insert(at - 3, ",");
  if (places.point) made += "." + part;
  return made;
}

// With so many digits before the point as there are places for.
std::string number_with_exponent(double value, const Places& places) {
  const double size = std::fabs(value);
  const int before = places.digits > 0 ? places.digits : 1;
  int exponent = size > 0 ? static_cast<int>(std::floor(std::log10(size))) + 1 - before : 0;
  std::string text = number_in(size / std::pow(10.0, exponent), places);
  const std::size_t point = text.find('.');
  if (size > 0 && static_cast<int>(point == std::string::npos ? text.size() : point) > before) {
    text = number_in(size / std::pow(10.0, ++exponent), places);  // rounded up to one digit more
  }
  text += places.exponent_mark;
  if (exponent < 0) text += '-';
  if (exponent >= 0 && places.exponent_plus) text += '+';
  return text + digits(std::abs(exponent), places.exponent);
}

std::string number_as(double value, const Places& places) {
  if (places.percent) value *= 100;
  if (places.exponent > 0) return number_with_exponent(value, places);
  return number_in(value / std::pow(1000.0, places.thousands), places);
}

// Whether something stands between the places before the point, as in 000-0000.
bool parts_digits(std::string_view section) {
  std::string ignored;
  bool digit = false;
  bool parted = false;
  for (std::size_t at = 0; at < section.size();) {
    if (take_quoted(section, at, ignored)) {
      parted = digit;
      continue;
    }
    const char c = section[at++];
    if (c == '.' || c == ',' || at_exponent(section, at - 1)) return false;
    const bool place = c == '0' || c == '#';
    if (place && parted) return true;
    parted = !place && (parted || digit);
    digit = digit || place;
  }
  return false;
}

// Each digit in its place; those that find none stand before the first.
std::string digits_in_places(const std::string& number, std::string_view section, int places) {
  std::string out;
  const auto count = static_cast<std::size_t>(places);
  std::size_t place = 0;
  for (std::size_t at = 0; at < section.size();) {
    if (take_quoted(section, at, out)) continue;
    const char c = section[at++];
    if (c != '0' && c != '#') {
      out += c;
      continue;
    }
    const std::size_t behind = count - ++place;  // places that follow
    if (place == 1 && number.size() > count) out.append(number, 0, number.size() - count);
    if (behind < number.size()) out += number[number.size() - 1 - behind];
  }
  return out;
}

// The number takes the place of the first run of places; what else stands there goes around it.
std::string formatted_number(double value, std::string_view pattern) {
  bool signs = false;
  const std::string_view section = section_of(pattern, value, signs);
  const Places places = places_of(section);
  std::string out;
  if (parts_digits(section)) {
    out = digits_in_places(number_as(value, places), section, places.digits);
    return signs ? "-" + out : out;
  }
  bool written = false;
  for (std::size_t at = 0; at < section.size();) {
    if (take_quoted(section, at, out)) continue;
    if (at_exponent(section, at)) {
      at = exponent_end(section, at);
      continue;
    }
    const char c = section[at++];
    if (c != '0' && c != '#' && c != '.' && c != ',') {
      out += c;
      continue;
    }
    if (!written) out += number_as(value, places);
    written = true;
  }
  return signs ? "-" + out : out;
}

std::optional<double> date_in(const Argument& value) {
  if (value.kind == Kind::Integer) return static_cast<double>(value.integer);
  if (value.kind == Kind::Real) return value.real;
  if (value.kind == Kind::Text) return parse_date(value.text);
  return std::nullopt;
}

std::optional<double> number_value(const Argument& value) {
  if (value.kind == Kind::Text) return parse_number(value.text);
  return date_in(value);
}

}  // namespace

std::string formatted(const Argument& value, std::string_view pattern) {
  if (value.kind == Kind::Null) return "";
  for (const NamedFormat& named : kNamed) {
    if (same_letters(named.name, pattern)) {
      pattern = named.pattern;
      break;
    }
  }
  if (is_text_format(pattern)) return formatted_text(text_argument(value), pattern);
  if (same_letters(pattern, "general number")) {
    const std::optional<double> number = number_value(value);
    return number ? number_text(*number) : text_argument(value);
  }
  const PatternKind kind = kind_of(pattern);
  if (kind.date && !kind.number) {
    if (const std::optional<double> days = date_in(value)) return DateFormat(*days, pattern).text();
  } else if (!pattern.empty()) {
    if (const std::optional<double> number = number_value(value))
      return formatted_number(*number, pattern);
  }
  return text_argument(value);
}

}  // namespace rk::jetsql
