#include "value/dates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "value/text.h"

namespace rk {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

// Days from 1970-01-01 to 1899-12-30.
constexpr std::int64_t kEpochShift = 25569;

// Days since 1970-01-01 of a proleptic Gregorian date, counted in years that begin in March so
// that the leap day is a year's last.
std::int64_t days_from_civil(std::int64_t year, int month, int day) noexcept {
  year -= month <= 2 ? 1 : 0;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t year_of_era = year - era * 400;
  const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const std::int64_t day_of_era =
      year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468;
}

void civil_from_days(std::int64_t days, CalendarTime& time) noexcept {
  days += 719468;
  const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const std::int64_t day_of_era = days - era * 146097;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year =
      day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t shifted = (5 * day_of_year + 2) / 153;
  time.day = static_cast<int>(day_of_year - (153 * shifted + 2) / 5 + 1);
  time.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
  time.year = static_cast<int>(year_of_era + era * 400 + (time.month <= 2 ? 1 : 0));
}

// --- reading dates out of texts -----------------------------------------------------------------

struct Token {
  enum class Kind { Number, Word, Sign } kind;
  int number = 0;
  std::size_t digits = 0;
  std::string word;  // lowered; a sign's character
  bool after_blank = false;
};

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_letter(char c) {
  return ascii_lower(c) >= 'a' && ascii_lower(c) <= 'z';
}

// A date needs few tokens; anything longer is none.
constexpr std::size_t kMaxTokens = 16;
constexpr std::size_t kMaxDigits = 4;

// Year, month and day of a Chinese date read as the signs between its numbers.
constexpr std::size_t kChineseBytes = 3;
std::optional<char> chinese_sign(std::string_view text) {
  if (text.starts_with("年") || text.starts_with("月")) return '-';
  if (text.starts_with("日")) return ' ';
  return std::nullopt;
}

std::optional<std::vector<Token>> tokens_of(std::string_view text) {
  std::vector<Token> tokens;
  bool blank = false;
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if (c == ' ' || c == '\t') {
      blank = true;
      ++at;
      continue;
    }
    if (tokens.size() == kMaxTokens) return std::nullopt;
    if (const auto sign = chinese_sign(text.substr(at))) {
      if (*sign != ' ') tokens.push_back({Token::Kind::Sign, 0, 0, std::string(1, *sign), blank});
      blank = *sign == ' ';
      at += kChineseBytes;
      continue;
    }
    std::size_t end = at + 1;
    Token token{Token::Kind::Sign, 0, 0, std::string(1, c), blank};
    if (is_digit(c)) {
      while (end < text.size() && is_digit(text[end])) ++end;
      if (end - at > kMaxDigits) return std::nullopt;
      token.kind = Token::Kind::Number;
      token.digits = end - at;
      for (std::size_t i = at; i < end; ++i) token.number = token.number * 10 + (text[i] - '0');
    } else if (is_letter(c)) {
      while (end < text.size() && is_letter(text[end])) ++end;
      token.kind = Token::Kind::Word;
      token.word = lowered_ascii(text.substr(at, end - at));
    } else if (c != '/' && c != '-' && c != ':' && c != ',' && c != '.') {
      return std::nullopt;
    }
    tokens.push_back(std::move(token));
    blank = false;
    at = end;
  }
  return tokens;
}

int month_of_name(std::string_view word) {
  constexpr std::array<std::string_view, 12> kMonths = {
      "january", "february", "march",     "april",   "may",      "june",
      "july",    "august",   "september", "october", "november", "december"};
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (word.size() >= 3 && kMonths[i].starts_with(word)) {
      if (word.size() == 3 || word.size() == kMonths[i].size()) return static_cast<int>(i) + 1;
    }
  }
  return 0;
}

bool is_weekday_name(std::string_view word) {
  constexpr std::array<std::string_view, 7> kDays = {"sunday",   "monday", "tuesday", "wednesday",
                                                     "thursday", "friday", "saturday"};
  return std::any_of(kDays.begin(), kDays.end(),
                     [&](std::string_view day) { return word == day || word == day.substr(0, 3); });
}

class DateReader {
 public:
  explicit DateReader(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

  std::optional<double> read() {
    if (tokens_.empty() || !split()) return std::nullopt;
    CalendarTime time;
    const bool has_date = !date_.empty();
    if (has_date && !read_date(time)) return std::nullopt;
    if (!clock_.empty() && !read_clock(time)) return std::nullopt;
    if (!has_date) return date_value({1899, 12, 30, time.hour, time.minute, time.second});
    return date_value(time);
  }

 private:
  bool is_sign(std::size_t i, char c) const {
    return i < tokens_.size() && tokens_[i].kind == Token::Kind::Sign && tokens_[i].word[0] == c;
  }
  bool is_half(std::size_t i) const {
    return i < tokens_.size() && tokens_[i].kind == Token::Kind::Word &&
           (tokens_[i].word == "am" || tokens_[i].word == "pm" || tokens_[i].word == "a" ||
            tokens_[i].word == "p");
  }

  // The clock is the run of numbers joined by ":" with AM or PM behind; the rest is the date.
  bool split() {
    std::size_t begin = tokens_.size();
    std::size_t end = begin;
    for (std::size_t i = 0; i < tokens_.size() && begin == tokens_.size(); ++i) {
      if (tokens_[i].kind == Token::Kind::Number && (is_sign(i + 1, ':') || is_half(i + 1)))
        begin = i;
    }
    if (begin != tokens_.size()) {
      end = begin + 1;
      while (is_sign(end, ':') && end + 1 < tokens_.size() &&
             tokens_[end + 1].kind == Token::Kind::Number) {
        end += 2;
      }
      if (is_half(end)) ++end;
      if (begin != 0 && end != tokens_.size()) return false;
    }
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
      (i >= begin && i < end ? clock_ : date_).push_back(tokens_[i]);
    }
    return true;
  }

  bool read_clock(CalendarTime& time) const {
    std::array<int, 3> parts{};
    std::size_t count = 0;
    int half = -1;  // 0 AM, 1 PM
    for (const Token& token : clock_) {
      if (token.kind == Token::Kind::Number) {
        if (count == parts.size()) return false;
        parts[count++] = token.number;
      } else if (token.kind == Token::Kind::Word) {
        half = token.word[0] == 'p' ? 1 : 0;
      }
    }
    if (half >= 0) {
      if (parts[0] < 0 || parts[0] > 12) return false;
      parts[0] = parts[0] % 12 + 12 * half;
    } else if (count < 2) {
      return false;
    }
    if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return false;
    time.hour = parts[0];
    time.minute = parts[1];
    time.second = parts[2];
    return true;
  }

  // Numbers and a month's name, with "/", "-", "." or "," between.
  bool read_date(CalendarTime& time) const {
    std::vector<Token> numbers;
    int named_month = 0;
    std::size_t name_at = 0;
    bool last_was_sign = true;
    // The day of the week in front, as long dates have it, says nothing more.
    std::size_t first = date_.front().kind == Token::Kind::Word && is_weekday_name(date_[0].word);
    if (first == 1 && date_.size() > 1 && date_[1].word == ",") ++first;
    for (std::size_t i = first; i < date_.size(); ++i) {
      const Token& token = date_[i];
      if (token.kind == Token::Kind::Sign) {
        if (last_was_sign || token.word == ":") return false;
        last_was_sign = true;
        continue;
      }
      last_was_sign = false;
      if (token.kind == Token::Kind::Number) {
        numbers.push_back(token);
        continue;
      }
      if (named_month != 0) return false;
      named_month = month_of_name(token.word);
      name_at = numbers.size();
      if (named_month == 0) return false;
    }
    if (last_was_sign || numbers.size() > 3) return false;
    return named_month != 0 ? by_name(numbers, named_month, name_at, time)
                            : by_numbers(numbers, time);
  }

  static int full_year(const Token& token) {
    if (token.digits > 2) return token.number;
    return token.number + (token.number < 30 ? 2000 : 1900);
  }

  static bool by_name(const std::vector<Token>& numbers, int month, std::size_t name_at,
                      CalendarTime& time) {
    if (numbers.size() == 1 && numbers[0].digits > 2) {
      return settle(numbers[0].number, month, 1, time);
    }
    if (numbers.size() != 2 || name_at > 1) return false;
    const bool year_first = numbers[0].digits > 2;
    return settle(full_year(numbers[year_first ? 0 : 1]), month, numbers[year_first ? 1 : 0].number,
                  time);
  }

  static bool by_numbers(const std::vector<Token>& numbers, CalendarTime& time) {
    // A year and a month mean its first day.
    if (numbers.size() == 2 && numbers[0].digits > 2) {
      return settle(numbers[0].number, numbers[1].number, 1, time);
    }
    if (numbers.size() == 2 && numbers[1].digits > 2) {
      return settle(numbers[1].number, numbers[0].number, 1, time);
    }
    if (numbers.size() != 3) return false;
    const Token& first = numbers[0];
    if (first.digits > 2) return settle(first.number, numbers[1].number, numbers[2].number, time);
    const int year = full_year(numbers[2]);
    return settle(year, first.number, numbers[1].number, time) ||
           settle(year, numbers[1].number, first.number, time);
  }

  static bool settle(int year, int month, int day, CalendarTime& time) {
    if (year < 100 || year > 9999 || month < 1 || month > 12) return false;
    if (day < 1 || day > days_in_month(year, month)) return false;
    time.year = year;
    time.month = month;
    time.day = day;
    return true;
  }

  std::vector<Token> tokens_;
  std::vector<Token> date_;
  std::vector<Token> clock_;
};

}  // namespace

std::int64_t day_number(int year, int month, int day) noexcept {
  const int months = month - 1;
  const int carried = months >= 0 ? months / 12 : -((11 - months) / 12);
  return days_from_civil(std::int64_t{year} + carried, months - 12 * carried + 1, 1) + day - 1 +
         kEpochShift;
}

bool is_leap_year(int year) noexcept {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int days_in_month(int year, int month) noexcept {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month == 2 && is_leap_year(year)) return 29;
  return kDays[static_cast<std::size_t>(month - 1)];
}

CalendarTime calendar_time(double days) noexcept {
  double whole = std::trunc(days);
  auto seconds = static_cast<std::int64_t>(
      std::floor(std::abs(days - whole) * static_cast<double>(kSecondsPerDay) + 0.5));
  if (seconds >= kSecondsPerDay) {  // rounded up to the next midnight
    seconds = 0;
    whole += 1;
  }
  CalendarTime time;
  civil_from_days(static_cast<std::int64_t>(whole) - kEpochShift, time);
  time.hour = static_cast<int>(seconds / 3600);
  time.minute = static_cast<int>(seconds / 60 % 60);
  time.second = static_cast<int>(seconds % 60);
  return time;
}

double date_value(const CalendarTime& time) noexcept {
  std::int64_t days = day_number(time.year, time.month, time.day);
  std::int64_t seconds =
      std::int64_t{time.hour} * 3600 + std::int64_t{time.minute} * 60 + time.second;
  std::int64_t carried = seconds / kSecondsPerDay;
  seconds %= kSecondsPerDay;
  if (seconds < 0) {
    seconds += kSecondsPerDay;
    --carried;
  }
  days += carried;
  const double fraction = static_cast<double>(seconds) / static_cast<double>(kSecondsPerDay);
  return days >= 0 ? static_cast<double>(days) + fraction : static_cast<double>(days) - fraction;
}

int weekday_of(double days) noexcept {
  // 1899-12-30 was a Saturday.
  const auto day = static_cast<std::int64_t>(std::floor(std::trunc(days)));
  return static_cast<int>(((day % 7) + 7 + 6) % 7) + 1;
}

std::optional<double> parse_date(std::string_view text) {
  std::optional<std::vector<Token>> tokens = tokens_of(text);
  if (!tokens) return std::nullopt;
  return DateReader(*std::move(tokens)).read();
}

}  // namespace rk
