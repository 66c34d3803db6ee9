#include "value/arithmetic.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "value/conversions.h"
#include "value/dates.h"
#include "value/script_error.h"

namespace rk {

namespace {

using Kind = Value::Kind;

// One operand as a number: `whole` for Byte, Integer and Long, and in ten-thousandths for
// Currency; `real` for every kind.
struct Number {
  Kind kind = Kind::Integer;
  std::int64_t whole = 0;
  double real = 0;
};

Number whole_operand(Kind kind, std::int64_t whole) {
  return {kind, whole, static_cast<double>(whole)};
}

Number number_of(const Value& value) {
  switch (value.kind()) {
    case Kind::Empty:
      return whole_operand(Kind::Integer, 0);
    case Kind::Boolean:
      return whole_operand(Kind::Integer, value.as_boolean() ? -1 : 0);
    case Kind::Byte:
      return whole_operand(Kind::Byte, value.as_byte());
    case Kind::Integer:
      return whole_operand(Kind::Integer, value.as_integer());
    case Kind::Long:
      return whole_operand(Kind::Long, value.as_long());
    case Kind::Single:
      return {Kind::Single, 0, value.as_single()};
    case Kind::Double:
      return {Kind::Double, 0, value.as_double()};
    case Kind::Date:
      return {Kind::Date, 0, value.as_date()};
    case Kind::Currency:
      return {Kind::Currency, value.as_currency(),
              static_cast<double>(value.as_currency()) / static_cast<double>(kCurrencyScale)};
    default:
      return {Kind::Double, 0, to_double(value)};
  }
}

bool is_whole(Kind kind) {
  return kind == Kind::Byte || kind == Kind::Integer || kind == Kind::Long;
}

Value fitted(std::int64_t number, Kind at_least) {
  if (at_least == Kind::Byte && number >= 0 && number <= std::numeric_limits<std::uint8_t>::max()) {
    return Value::byte(static_cast<std::uint8_t>(number));
  }
  if (at_least != Kind::Long && number >= std::numeric_limits<std::int16_t>::min() &&
      number <= std::numeric_limits<std::int16_t>::max()) {
    return Value::integer(static_cast<std::int16_t>(number));
  }
  if (number >= std::numeric_limits<std::int32_t>::min() &&
      number <= std::numeric_limits<std::int32_t>::max()) {
    return Value::long_integer(static_cast<std::int32_t>(number));
  }
  return Value::real(static_cast<double>(number));
}

Value real_result(double number) {
  if (!std::isfinite(number)) raise(errors::kOverflow);
  return Value::real(number);
}

Value single_result(double number) {
  if (std::fabs(number) <= std::numeric_limits<float>::max()) {
    return Value::single(static_cast<float>(number));
  }
  return real_result(number);
}

Value date_result(double days) {
  if (!(days >= kFirstDate && days < kPastLastDate)) raise(errors::kOverflow);
  return Value::date(days);
}

Value currency_result(double number) {
  const double scaled = std::nearbyint(number * static_cast<double>(kCurrencyScale));
  if (!(std::fabs(scaled) < 9223372036854775807.0)) raise(errors::kOverflow);
  return Value::currency(static_cast<std::int64_t>(scaled));
}

// A Single keeps its kind beside whole numbers that it can hold exactly.
bool stays_single(const Number& a, const Number& b) {
  const auto narrow = [](Kind k) {
    return k == Kind::Single || k == Kind::Byte || k == Kind::Integer;
  };
  return (a.kind == Kind::Single || b.kind == Kind::Single) && narrow(a.kind) && narrow(b.kind);
}

bool either(const Number& a, const Number& b, Kind kind) {
  return a.kind == kind || b.kind == kind;
}

std::int64_t in_currency(const Number& n) {
  if (n.kind == Kind::Currency) return n.whole;
  return currency_result(n.real).as_currency();
}

bool any_null(const Value& a, const Value& b) {
  return a.is_null() || b.is_null();
}

Value sum(const Number& a, const Number& b, bool minus) {
  if (is_whole(a.kind) && is_whole(b.kind)) {
    return fitted(minus ? a.whole - b.whole : a.whole + b.whole, std::max(a.kind, b.kind));
  }
  const double real = minus ? a.real - b.real : a.real + b.real;
  if (either(a, b, Kind::Date)) {
    if (minus && a.kind == b.kind) return real_result(real);
    return date_result(real);
  }
  if (either(a, b, Kind::Currency)) {
    std::int64_t result = 0;
    const std::int64_t x = in_currency(a);
    const std::int64_t y = in_currency(b);
    if (minus ? __builtin_sub_overflow(x, y, &result) : __builtin_add_overflow(x, y, &result)) {
      raise(errors::kOverflow);
    }
    return Value::currency(result);
  }
  return stays_single(a, b) ? single_result(real) : real_result(real);
}

// Rounded to a whole number of 32 bits, with the kind that \ and Mod give their result.
Number rounded(const Value& value) {
  const Number number = number_of(value);
  if (is_whole(number.kind)) return number;
  const double whole = std::nearbyint(number.real);
  if (!(whole >= std::numeric_limits<std::int32_t>::min() &&
        whole <= std::numeric_limits<std::int32_t>::max())) {
    raise(errors::kOverflow);
  }
  return whole_operand(Kind::Long, static_cast<std::int64_t>(whole));
}

// --- logic ------------------------------------------------------------------------------------

struct Bits {
  Kind kind = Kind::Integer;
  std::int32_t bits = 0;
};

Bits bits_of(const Value& value) {
  switch (value.kind()) {
    case Kind::Empty:
      return {Kind::Integer, 0};
    case Kind::Boolean:
      return {Kind::Boolean, value.as_boolean() ? -1 : 0};
    case Kind::Byte:
      return {Kind::Byte, value.as_byte()};
    case Kind::Integer:
      return {Kind::Integer, value.as_integer()};
    case Kind::String:
      if (!parse_number(value.as_view())) return {Kind::Boolean, to_boolean(value) ? -1 : 0};
      return {Kind::Long, to_long(value)};
    case Kind::Object:
      return bits_of(plain_value(value));
    default:
      return {Kind::Long, to_long(value)};
  }
}

Value from_bits(Kind kind, std::int32_t bits) {
  switch (kind) {
    case Kind::Boolean:
      return Value::boolean(bits != 0);
    case Kind::Byte:
      return Value::byte(static_cast<std::uint8_t>(bits));
    case Kind::Integer:
      return Value::integer(static_cast<std::int16_t>(bits));
    default:
      return Value::long_integer(bits);
  }
}

// Both Boolean or both Byte keep their kind; narrower ones meet at Integer.
Kind common_kind(Kind a, Kind b) {
  if (a == b) return a;
  return a == Kind::Long || b == Kind::Long ? Kind::Long : Kind::Integer;
}

template <class Operation>
Value bitwise(const Value& a, const Value& b, Operation operation) {
  const Bits x = bits_of(a);
  const Bits y = bits_of(b);
  return from_bits(common_kind(x.kind, y.kind), operation(x.bits, y.bits));
}

}  // namespace

Value whole_number(std::int64_t number) {
  return fitted(number, Kind::Integer);
}

Value add(const Value& a, const Value& b) {
  if (a.is_object() || b.is_object()) return add(plain_value(a), plain_value(b));
  if (any_null(a, b)) return Value::null();
  const bool texts =
      (a.is_text() && (b.is_text() || b.is_empty())) || (a.is_empty() && b.is_text());
  if (texts) return concatenate(a, b);
  return sum(number_of(a), number_of(b), false);
}

Value subtract(const Value& a, const Value& b) {
  if (a.is_object() || b.is_object()) return subtract(plain_value(a), plain_value(b));
  if (any_null(a, b)) return Value::null();
  return sum(number_of(a), number_of(b), true);
}

Value multiply(const Value& a, const Value& b) {
  if (a.is_object() || b.is_object()) return multiply(plain_value(a), plain_value(b));
  if (any_null(a, b)) return Value::null();
  const Number x = number_of(a);
  const Number y = number_of(b);
  if (is_whole(x.kind) && is_whole(y.kind)) {
    return fitted(x.whole * y.whole, std::max(x.kind, y.kind));
  }
  const bool wide = either(x, y, Kind::Double) || either(x, y, Kind::Date);
  if (either(x, y, Kind::Currency) && !wide) {
    const __int128 scaled = static_cast<__int128>(in_currency(x)) * in_currency(y);
    const auto half = static_cast<__int128>(kCurrencyScale / 2);
    const __int128 result = (scaled + (scaled < 0 ? -half : half)) / kCurrencyScale;
    if (result > std::numeric_limits<std::int64_t>::max() ||
        result < std::numeric_limits<std::int64_t>::min()) {
      raise(errors::kOverflow);
    }
    return Value::currency(static_cast<std::int64_t>(result));
  }
  const double product = x.real * y.real;
  return stays_single(x, y) ? single_result(product) : real_result(product);
}

Value divide(const Value& a, const Value& b) {
  if (a.is_object() || b.is_object()) return divide(plain_value(a), plain_value(b));
  if (any_null(a, b)) return Value::null();
  const Number x = number_of(a);
  const Number y = number_of(b);
  if (y.real == 0) raise(x.real == 0 ? errors::kOverflow : errors::kDivisionByZero);
  const double quotient = x.real / y.real;
  return stays_single(x, y) ? single_result(quotient) : real_result(quotient);
}

Value integer_divide(const Value& a, const Value& b) {
  if (a.is_object() || b.is_object()) return integer_divide(plain_value(a), plain_value(b));
  if (any_null(a, b)) return Value::null();
  const Number x = rounded(a);
  const Number y = rounded(b);
  if (y.whole == 0) raise(errors::kDivisionByZero);
  return fitted(x.whole / y.whole, std::max(x.kind, y.kind));
}

Value modulo(const Value& a, const Value& b) {
  if (a.is_object() || b.is_object()) return modulo(plain_value(a), plain_value(b));
  if (any_null(a, b)) return Value::null();
  const Number x = rounded(a);
  const Number y = rounded(b);
  if (y.whole == 0) raise(errors::kDivisionByZero);
  return fitted(x.whole % y.whole, std::max(x.kind, y.kind));
}

Value power(const Value& a, const Value& b) {
  if (a.is_object() || b.is_object()) return power(plain_value(a), plain_value(b));
  if (any_null(a, b)) return Value::null();
  const double base = number_of(a).real;
  const double exponent = number_of(b).real;
  if (base < 0 && exponent != std::trunc(exponent)) raise(errors::kInvalidCall);
  if (base == 0 && exponent < 0) raise(errors::kInvalidCall);
  return real_result(std::pow(base, exponent));
}

Value negate(const Value& a) {
  if (a.is_object()) return negate(plain_value(a));
  if (a.is_null()) return a;
  const Number x = number_of(a);
  if (is_whole(x.kind)) return fitted(-x.whole, x.kind);
  switch (x.kind) {
    case Kind::Single:
      return Value::single(-a.as_single());
    case Kind::Date:
      return date_result(-x.real);
    case Kind::Currency:
      if (x.whole == std::numeric_limits<std::int64_t>::min()) raise(errors::kOverflow);
      return Value::currency(-x.whole);
    default:
      return Value::real(-x.real);
  }
}

Value concatenate(const Value& a, const Value& b) {
  if (a.is_null() && b.is_null()) return a;
  Text joined = joined_text(a);
  joined.append(joined_text(b));
  return Value::text(std::move(joined));
}

Value logical_not(const Value& a) {
  if (a.is_null()) return a;
  const Bits x = bits_of(a);
  return from_bits(x.kind, ~x.bits);
}

// Null is "unknown": where the other operand alone decides, its bits stand.
Value logical_and(const Value& a, const Value& b) {
  if (any_null(a, b)) {
    const Value& known = a.is_null() ? b : a;
    if (known.is_null()) return known;
    const Bits x = bits_of(known);
    return x.bits == 0 ? from_bits(x.kind, 0) : Value::null();
  }
  return bitwise(a, b, [](std::int32_t x, std::int32_t y) { return x & y; });
}

Value logical_or(const Value& a, const Value& b) {
  if (any_null(a, b)) {
    const Value& known = a.is_null() ? b : a;
    if (known.is_null()) return known;
    const Bits x = bits_of(known);
    return x.bits != 0 ? from_bits(x.kind, x.bits) : Value::null();
  }
  return bitwise(a, b, [](std::int32_t x, std::int32_t y) { return x | y; });
}

Value logical_xor(const Value& a, const Value& b) {
  if (any_null(a, b)) return Value::null();
  return bitwise(a, b, [](std::int32_t x, std::int32_t y) { return x ^ y; });
}

Value logical_eqv(const Value& a, const Value& b) {
  if (any_null(a, b)) return Value::null();
  return bitwise(a, b, [](std::int32_t x, std::int32_t y) { return ~(x ^ y); });
}

Value logical_imp(const Value& a, const Value& b) {
  if (a.is_null() && b.is_null()) return a;
  if (a.is_null()) {
    const Bits y = bits_of(b);
    return y.bits != 0 ? from_bits(y.kind, y.bits) : Value::null();
  }
  if (b.is_null()) {
    const Bits x = bits_of(a);
    return x.bits == 0 ? from_bits(x.kind, -1) : Value::null();
  }
  return bitwise(a, b, [](std::int32_t x, std::int32_t y) { return ~x | y; });
}

}  // namespace rk
