#include "jetsql/days.h"

#include <cmath>
#include <cstdio>
#include <string>

#include "jetsql/letters.h"
#include "jetsql/translate.h"

namespace rk::jetsql {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::int64_t kFirstDay = -657434;  // 0100-01-01
constexpr std::int64_t kLastDay = 2958465;   // 9999-12-31

// Days of a date in the proleptic Gregorian calendar, from 0000-03-01, so that the leap day ends
// the year.
std::int64_t days_from_march(std::int64_t year, std::int64_t month, std::int64_t day) {
  const std::int64_t shifted = month > 2 ? month - 3 : month + 9;
  const std::int64_t y = month > 2 ? year : year - 1;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t year_of_era = y - era * 400;
  const std::int64_t day_of_year = (153 * shifted + 2) / 5 + day - 1;
  return era * 146097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
}

const std::int64_t kOrigin = days_from_march(1899, 12, 30);

constexpr bool is_leap(std::int64_t year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

}  // namespace

int days_in_month(std::int64_t year, int month) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && is_leap(year) ? 29 : kDays[month - 1];
}

std::int64_t day_number(std::int64_t year, std::int64_t month, std::int64_t day) {
  std::int64_t months = year * 12 + month - 1;
  std::int64_t y = months / 12;
  std::int64_t m = months % 12;
  if (m < 0) {
    m += 12;
    --y;
  }
  return days_from_march(y, m + 1, 1) + day - 1 - kOrigin;
}

double days_of(std::int64_t day, std::int64_t seconds) {
  const double fraction = static_cast<double>(seconds) / static_cast<double>(kSecondsPerDay);
  return day >= 0 ? static_cast<double>(day) + fraction : static_cast<double>(day) - fraction;
}

double days_of(const Moment& m) {
  return days_of(day_number(m.year, m.month, m.day), m.hour * 3600 + m.minute * 60 + m.second);
}

Moment moment_of(double days) {
  if (!(days > static_cast<double>(kFirstDay) - 1 && days < static_cast<double>(kLastDay) + 1)) {
    throw SqlError(kOverflow, "Overflow: no such date.", SqlError::kNowhere);
  }
  double whole = std::trunc(days);
  auto seconds = static_cast<std::int64_t>(
      std::llround(std::fabs(days - whole) * static_cast<double>(kSecondsPerDay)));
  if (seconds == kSecondsPerDay) {
    seconds = 0;
    whole += 1;
  }
  // Days from 0000-03-01 back to year, month and day.
  const std::int64_t z = static_cast<std::int64_t>(whole) + kOrigin;
  const std::int64_t era = z / 146097;
  const std::int64_t day_of_era = z - era * 146097;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year =
      day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t shifted = (5 * day_of_year + 2) / 153;
  Moment moment;
  moment.day = static_cast<int>(day_of_year - (153 * shifted + 2) / 5 + 1);
  moment.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
  moment.year = static_cast<int>(year_of_era + era * 400 + (moment.month <= 2 ? 1 : 0));
  moment.hour = static_cast<int>(seconds / 3600);
  moment.minute = static_cast<int>(seconds / 60 % 60);
  moment.second = static_cast<int>(seconds % 60);
  return moment;
}

int weekday_of(std::int64_t day) {
  // 1899-12-30 was a Saturday.
  return static_cast<int>(((day + 6) % 7 + 7) % 7) + 1;
}

std::string date_text(double days) {
  const Moment m = moment_of(days);
  char text[64];
  int size = std::snprintf(text, sizeof text, "%04d-%02d-%02d", m.year, m.month, m.day);
  if (m.hour != 0 || m.minute != 0 || m.second != 0) {
    size += std::snprintf(text + size, sizeof text - static_cast<std::size_t>(size),
                          " %02d:%02d:%02d", m.hour, m.minute, m.second);
  }
  return std::string(text, static_cast<std::size_t>(size));
}

namespace {

constexpr std::string_view kMonths[] = {"january",   "february", "march",    "april",
                                        "may",       "june",     "july",     "august",
                                        "september", "october",  "november", "december"};

// Reads a date's text from left to right.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : text_(text) {}

  std::optional<double> read() {
    skip_blanks();
    if (at_end()) return std::nullopt;
    Moment moment;
    const bool time_first = looks_like_time();
    if (!time_first && !date(moment)) return std::nullopt;
    skip_blanks();
    if (!at_end() && !time(moment)) return std::nullopt;
    skip_blanks();
    if (!at_end()) return std::nullopt;
    return days_of(moment);
  }

 private:
  bool at_end() const { return position_ >= text_.size(); }
  char peek() const { return at_end() ? '\0' : text_[position_]; }
  void skip_blanks() {
    while (!at_end() && is_blank(text_[position_])) ++position_;
  }

  // Digits that a colon, or AM or PM, follows.
  bool looks_like_time() const {
    std::size_t i = position_;
    while (i < text_.size() && is_digit(text_[i])) ++i;
    if (i == position_) return false;
    while (i < text_.size() && is_blank(text_[i])) ++i;
    if (i >= text_.size()) return false;
    return text_[i] == ':' || ((lower(text_[i]) == 'a' || lower(text_[i]) == 'p') &&
                               i + 1 < text_.size() && lower(text_[i + 1]) == 'm');
  }

  bool number(int& value, int* digits = nullptr) {
    const std::size_t begin = position_;
    value = 0;
    while (is_digit(peek()) && position_ - begin < 5)
      value = value * 10 + (text_[position_++] - '0');
    if (digits != nullptr) *digits = static_cast<int>(position_ - begin);
    return position_ > begin && !is_digit(peek());
  }

  // A month's name or its first three letters.
  int month_name() {
    const std::size_t begin = position_;
    while (is_letter(peek())) ++position_;
    const std::string_view word = text_.substr(begin, position_ - begin);
    for (int i = 0; i < 12; ++i) {
      const bool short_form = word.size() == 3 && same_letters(word, kMonths[i].substr(0, 3));
      if (short_form || same_letters(word, kMonths[i])) return i + 1;
    }
    position_ = begin;
    return 0;
  }

  // What stands between the parts: one of - / . , with blanks around, or blanks.
  bool separator() {
    const std::size_t begin = position_;
    skip_blanks();
    const char c = peek();
    if (c == '-' || c == '/' || c == '.' || c == ',') {
      ++position_;
      skip_blanks();
    }
    return position_ > begin;
  }

  struct Part {
    int value = 0;
    int digits = 0;
    bool named = false;
  };

  bool part(Part& part) {
    if (is_letter(peek())) {
      part.value = month_name();
      part.named = true;
      return part.value != 0;
    }
    return number(part.value, &part.digits);
  }

  bool date(Moment& moment) {
    Part parts[3];
    for (int i = 0; i < 3; ++i) {
      if (i > 0 && !separator()) return false;
      if (!part(parts[i])) return false;
    }
    return assign(moment, parts);
  }

  static bool assign(Moment& moment, Part (&parts)[3]) {
    if (parts[0].digits > 2) return set(moment, parts[0], parts[1], parts[2]);  // y m d
    if (parts[1].named) {  // d Mon y, or y Mon d
      if (parts[0].value > 31) return set(moment, parts[0], parts[1], parts[2]);
      return set(moment, parts[2], parts[1], parts[0]);
    }
    if (parts[0].named) return set(moment, parts[2], parts[0], parts[1]);  // Mon d y
    if (parts[0].value <= 12 && parts[2].digits != 1)
      return set(moment, parts[2], parts[0], parts[1]);
    if (parts[0].value <= 31 && parts[1].value <= 12)
      return set(moment, parts[2], parts[1], parts[0]);
    return set(moment, parts[0], parts[1], parts[2]);
  }

  static bool set(Moment& moment, const Part& year, const Part& month, const Part& day) {
    if (year.named || day.named || year.digits == 3 || year.digits > 4) return false;
    moment.year = year.value;
    if (year.digits <= 2) moment.year += year.value < 30 ? 2000 : 1900;
    moment.month = month.value;
    moment.day = day.value;
    if (moment.year < 100 || month.value < 1 || month.value > 12 || day.value < 1) return false;
    return day.value <= days_in_month(moment.year, month.value);
  }

  bool time(Moment& moment) {
    if (!number(moment.hour)) return false;
    skip_blanks();
    bool colons = false;
    if (peek() == ':') {
      colons = true;
      ++position_;
      if (!number(moment.minute)) return false;
      if (peek() == ':') {
        ++position_;
        if (!number(moment.second)) return false;
      }
    }
    skip_blanks();
    const char half = lower(peek());
    if (half == 'a' || half == 'p') {
      if (position_ + 1 >= text_.size() || lower(text_[position_ + 1]) != 'm') return false;
      position_ += 2;
      if (moment.hour < 1 || moment.hour > 12) return false;
      moment.hour = moment.hour % 12 + (half == 'p' ? 12 : 0);
    } else if (!colons) {
      return false;
    }
    return moment.hour < 24 && moment.minute < 60 && moment.second < 60;
  }

  std::string_view text_;
  std::size_t position_ = 0;
};

}  // namespace

std::optional<double> parse_date(std::string_view text) {
  return DateReader(text).read();
}

}  // namespace rk::jetsql
