// Arithmetic, conversions and chance.
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "jetsql/arguments.h"
#include "jetsql/days.h"
#include "jetsql/letters.h"
#include "jetsql/like.h"
#include "jetsql/numbers.h"
#include "jetsql/sql_error.h"
#include "jetsql/translate.h"

namespace rk::jetsql {

namespace {

using Kind = Argument::Kind;

void finite(Answer& answer, double value) {
  if (!std::isfinite(value)) throw SqlError(kOverflow, "Overflow.", SqlError::kNowhere);
  answer_number(answer, value);
}

[[noreturn]] void division_by_zero() {
  throw SqlError(kUnspecified, "Division by zero.", SqlError::kNowhere);
}

[[noreturn]] void invalid_argument() {
  throw SqlError(kUnspecified, "Invalid procedure call.", SqlError::kNowhere);
}

// "+": two texts are joined, anything else is added up; a date stays one.
void add(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  if (a[0].kind == Kind::Text && a[1].kind == Kind::Text) {
    return answer_text(answer, std::string(a[0].text).append(a[1].text));
  }
  if (a[0].kind == Kind::Integer && a[1].kind == Kind::Integer) {
    std::int64_t total = 0;
    if (!__builtin_add_overflow(a[0].integer, a[1].integer, &total))
      return answer_whole(answer, total);
  }
  const double total = number_argument(a[0]) + number_argument(a[1]);
  for (const Argument& argument : a) {
    if (argument.kind == Kind::Text && !parse_number(argument.text))
      return answer_date(answer, total);
  }
  finite(answer, total);
}

void join(Arguments a, Answer& answer) {
  std::string text;
  bool all_null = true;
  for (const Argument& argument : a) {
    if (argument.kind == Kind::Null) continue;
    all_null = false;
    if (argument.kind == Kind::Text) {
      text.append(argument.text);
    } else {
      text += text_argument(argument);
    }
  }
  if (!all_null) answer_text(answer, std::move(text));
}

void like(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const auto view = [](const Argument& argument, std::string& kept) -> std::string_view {
    if (argument.kind == Kind::Text) return argument.text;
    kept = text_argument(argument);
    return kept;
  };
  std::string text;
  std::string pattern;
  answer_flag(answer, is_like(view(a[0], text), view(a[1], pattern)));
}

void number(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  if (a[0].kind == Kind::Integer) return answer_whole(answer, a[0].integer);
  answer_number(answer, number_argument(a[0]));
}

void text(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_text(answer, text_argument(a[0]));
}

void flag(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_flag(answer, number_argument(a[0]) != 0);
}

void integer(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_whole(answer, whole_argument(a[0]));
}

// A whole number of a type that holds so much and no more.
template <std::int64_t Least, std::int64_t Most>
void whole_within(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t value = whole_argument(a[0]);
  if (value < Least || value > Most) {
    throw SqlError(kOverflow, "Overflow.", SqlError::kNowhere);
  }
  answer_whole(answer, value);
}

void real(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_number(answer, number_argument(a[0]));
}

void currency(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_number(answer, amount(number_argument(a[0])));
}

void divide(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const double by = number_argument(a[1]);
  if (by == 0) division_by_zero();
  finite(answer, number_argument(a[0]) / by);
}

void quotient(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t by = whole_argument(a[1]);
  if (by == 0) division_by_zero();
  // The one quotient that a whole number cannot hold.
  if (by == -1) return answer_whole(answer, whole_number(-number_argument(a[0])));
  answer_whole(answer, whole_argument(a[0]) / by);
}

void modulo(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t by = whole_argument(a[1]);
  if (by == 0) division_by_zero();
  answer_whole(answer, by == -1 ? 0 : whole_argument(a[0]) % by);
}

void power(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  finite(answer, std::pow(number_argument(a[0]), number_argument(a[1])));
}

void absolute(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  // The least whole number has no opposite among them.
  if (a[0].kind == Kind::Integer && a[0].integer != std::numeric_limits<std::int64_t>::min()) {
    return answer_whole(answer, std::abs(a[0].integer));
  }
  answer_number(answer, std::fabs(number_argument(a[0])));
}

void floor_of(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  if (a[0].kind == Kind::Integer) return answer_whole(answer, a[0].integer);
  answer_number(answer, std::floor(number_argument(a[0])));
}

void fix(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  if (a[0].kind == Kind::Integer) return answer_whole(answer, a[0].integer);
  answer_number(answer, std::trunc(number_argument(a[0])));
}

void sign(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const double value = number_argument(a[0]);
  answer_whole(answer, value > 0 ? 1 : value < 0 ? -1 : 0);
}

void round(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t places = a.size() > 1 ? whole_argument(a[1]) : 0;
  constexpr std::int64_t kMaxPlaces = 22;  // beyond, a double has no digits left to round
  if (places < 0 || places > kMaxPlaces) invalid_argument();
  if (a[0].kind == Kind::Integer) return answer_whole(answer, a[0].integer);
  const double value = number_argument(a[0]);
  const double scale = std::pow(10.0, static_cast<double>(places));
  const double scaled = value * scale;
  // Above 2^53 there is no part behind the point to round.
  if (!(std::fabs(scaled) < 9007199254740992.0)) return answer_number(answer, value);
  answer_number(answer, round_half_even(scaled) / scale);
}

// Below 0 the same argument gives the same number; else what chance the engine hands in decides.
void rnd(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const double seed = number_argument(a[0]);
  auto bits = static_cast<std::uint64_t>(whole_argument(a[1]));
  if (seed <= 0) {
    bits = static_cast<std::uint64_t>(std::llround(std::fmod(seed, 1e12) * 1000));
    bits = (bits ^ bits >> 31U) * 0x9E3779B97F4A7C15U;
    bits ^= bits >> 29U;
  }
  constexpr std::uint64_t kSteps = 1U << 24U;
  answer_number(answer, static_cast<double>(bits % kSteps) / static_cast<double>(kSteps));
}

void square_root(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const double value = number_argument(a[0]);
  if (value < 0) invalid_argument();
  answer_number(answer, std::sqrt(value));
}

void logarithm(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const double value = number_argument(a[0]);
  if (value <= 0) invalid_argument();
  answer_number(answer, std::log(value));
}

template <double (*F)(double)>
void of_double(Arguments a, Answer& answer) {
  if (!any_null(a)) finite(answer, F(number_argument(a[0])));
}

void is_numeric(Arguments a, Answer& answer) {
  const bool text_number = a[0].kind == Kind::Text && parse_number(a[0].text);
  answer_flag(answer, text_number || a[0].kind == Kind::Integer || a[0].kind == Kind::Real);
}

// Of a text that begins with &H or &O: the digits of that base behind it.
double marked_number(std::string_view text) {
  const int base = lower(text[1]) == 'h' ? 16 : lower(text[1]) == 'o' ? 8 : 0;
  std::int32_t value = 0;
  std::uint32_t bits = 0;
  if (base != 0) std::from_chars(text.data() + 2, text.data() + text.size(), bits, base);
  // Four digits are an Integer's 16 bits, as VB reads them.
  const bool is_short = base == 16 && text.size() <= 6 && bits <= 0xFFFF;
  value = is_short ? static_cast<std::int16_t>(bits) : static_cast<std::int32_t>(bits);
  return value;
}

// The number that a text begins with, blanks left out; 0 where it begins with none.
void val(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  constexpr std::size_t kMaxDigits = 64;  // more than any number needs
  std::string digits;
  for (const char c : text_argument(a[0])) {
    if (digits.size() == kMaxDigits) break;
    if (!is_blank(c)) digits += c;
  }
  if (digits.size() > 1 && digits[0] == '&') return answer_number(answer, marked_number(digits));
  while (!digits.empty() && !parse_number(digits)) digits.pop_back();
  answer_number(answer, digits.empty() ? 0 : *parse_number(digits));
}

void str(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const double value = number_argument(a[0]);
  std::string text = (value < 0 ? "" : " ") + number_text(value);
  // Without the zero before the point, which CStr keeps.
  if (text.size() > 2 && text[1] == '0' && text[2] == '.') text.erase(1, 1);
  answer_text(answer, std::move(text));
}

std::string in_base(std::int64_t value, unsigned bits) {
  // Negative numbers as the 32 bits of a Long.
  auto rest = value < 0 ? static_cast<std::uint64_t>(static_cast<std::uint32_t>(value))
                        : static_cast<std::uint64_t>(value);
  std::string text;
  do {
    text.insert(text.begin(), "0123456789ABCDEF"[rest & ((1U << bits) - 1)]);
    rest >>= bits;
  } while (rest != 0);
  return text;
}

void hex(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_text(answer, in_base(whole_argument(a[0]), 4));
}

void oct(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_text(answer, in_base(whole_argument(a[0]), 3));
}

constexpr Function kFunctions[] = {
    {"jet_add", 2, true, add},
    {"jet_join", -1, true, join},
    {"jet_like", 2, true, like},
    {"jet_number", 1, true, number},
    {"jet_text", 1, true, text},
    {"jet_flag", 1, true, flag},
    {"jet_integer", 1, true, integer},
    {"jet_byte", 1, true, whole_within<0, 255>},
    {"jet_short", 1, true, whole_within<-32768, 32767>},
    {"jet_long", 1, true, whole_within<-2147483648LL, 2147483647>},
    {"jet_double", 1, true, real},
    {"jet_currency", 1, true, currency},
    {"jet_divide", 2, true, divide},
    {"jet_quotient", 2, true, quotient},
    {"jet_modulo", 2, true, modulo},
    {"jet_power", 2, true, power},
    {"jet_abs", 1, true, absolute},
    {"jet_int", 1, true, floor_of},
    {"jet_fix", 1, true, fix},
    {"jet_sgn", 1, true, sign},
    {"jet_round", -1, true, round},
    {"jet_rnd", 2, true, rnd},
    {"jet_sqr", 1, true, square_root},
    {"jet_log", 1, true, logarithm},
    {"jet_exp", 1, true, of_double<std::exp>},
    {"jet_sin", 1, true, of_double<std::sin>},
    {"jet_cos", 1, true, of_double<std::cos>},
    {"jet_tan", 1, true, of_double<std::tan>},
    {"jet_atn", 1, true, of_double<std::atan>},
    {"jet_isnumeric", 1, true, is_numeric},
    {"jet_val", 1, true, val},
    {"jet_str", 1, true, str},
    {"jet_hex", 1, true, hex},
    {"jet_oct", 1, true, oct},
};

}  // namespace

std::span<const Function> number_functions() {
  return kFunctions;
}

}  // namespace rk::jetsql
