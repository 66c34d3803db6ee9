// Built-in functions on numbers.

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "value/arithmetic.h"
#include "vbscript/built_in_functions.h"
#include "vbscript/machine.h"

namespace rk::vbscript::functions {

namespace {

using Kind = Value::Kind;

Value finite(double number) {
  if (!std::isfinite(number)) raise(errors::kOverflow);
  return Value::real(number);
}

// A number in its own kind; Null stays Null.
Value number_of(const Value& value) {
  const Value number = plain(value);
  if (number.kind() == Kind::Byte || number.kind() == Kind::Date) return number;
  return to_number(number);
}

bool is_whole(const Value& value) {
  return value.kind() == Kind::Byte || value.kind() == Kind::Integer || value.kind() == Kind::Long;
}

// The same kind with a whole value.
Value whole_of(const Value& value, double (*round_to)(double)) {
  const Value number = number_of(value);
  if (number.is_null() || is_whole(number)) return number;
  const double whole = round_to(to_double(number));
  switch (number.kind()) {
    case Kind::Single:
      return Value::single(static_cast<float>(whole));
    case Kind::Currency:
      return Value::currency(static_cast<std::int64_t>(whole) * kCurrencyScale);
    case Kind::Date:
      return Value::date(whole);
    default:
      return Value::real(whole);
  }
}

double floor_of(double number) {
  return std::floor(number);
}
double truncate(double number) {
  return std::trunc(number);
}

std::string digits_of(std::uint32_t number, unsigned base) {
  std::string digits;
  do {
    digits.insert(digits.begin(), "0123456789ABCDEF"[number % base]);
    number /= base;
  } while (number != 0);
  return digits;
}

// Negative numbers show the bits of their kind.
Value based_text(const Value& argument, unsigned base) {
  const Value number = number_of(argument);
  if (number.is_null()) return number;
  if (number.kind() == Kind::Integer) {
    return Value::text(digits_of(static_cast<std::uint16_t>(number.as_integer()), base));
  }
  return Value::text(digits_of(static_cast<std::uint32_t>(to_long(number)), base));
}

}  // namespace

Value absolute(Machine&, Arguments arguments) {
  const Value number = number_of(*arguments[0]);
  if (number.is_null()) return number;
  return to_double(number) < 0 ? negate(number) : number;
}

Value whole(Machine&, Arguments arguments) {
  return whole_of(*arguments[0], floor_of);
}
Value fix(Machine&, Arguments arguments) {
  return whole_of(*arguments[0], truncate);
}

Value sign(Machine&, Arguments arguments) {
  const double number = to_double(*arguments[0]);
  return Value::integer(static_cast<std::int16_t>(number > 0 ? 1 : number < 0 ? -1 : 0));
}

// Halves go to the even neighbour.
Value round(Machine&, Arguments arguments) {
  const Value number = number_of(*arguments[0]);
  const std::int32_t places = long_or(arguments, 1, 0);
  constexpr std::int32_t kMostPlaces = 22;
  if (places < 0 || places > kMostPlaces) raise(errors::kInvalidCall);
  if (number.is_null()) raise(errors::kInvalidNull);
  if (is_whole(number)) return number;
  const double scale = std::pow(10.0, places);
  const double value = to_double(number);
  const double scaled = value * scale;
  // Past this size a Double has no decimals left to round.
  constexpr double kNoDecimals = 1e15;
  const double rounded = std::fabs(scaled) < kNoDecimals ? std::nearbyint(scaled) / scale : value;
  switch (number.kind()) {
    case Kind::Single:
      return Value::single(static_cast<float>(rounded));
    case Kind::Currency:
      return Value::currency(to_currency(Value::real(rounded)));
    case Kind::Date:
      return Value::date(rounded);
    default:
      return Value::real(rounded);
  }
}

Value square_root(Machine&, Arguments arguments) {
  const double number = to_double(*arguments[0]);
  if (number < 0) raise(errors::kInvalidCall);
  return Value::real(std::sqrt(number));
}

Value logarithm(Machine&, Arguments arguments) {
  const double number = to_double(*arguments[0]);
  if (number <= 0) raise(errors::kInvalidCall);
  return Value::real(std::log(number));
}

Value exponential(Machine&, Arguments arguments) {
  return finite(std::exp(to_double(*arguments[0])));
}
Value sine(Machine&, Arguments arguments) {
  return finite(std::sin(to_double(*arguments[0])));
}
Value cosine(Machine&, Arguments arguments) {
  return finite(std::cos(to_double(*arguments[0])));
}
Value tangent(Machine&, Arguments arguments) {
  return finite(std::tan(to_double(*arguments[0])));
}
Value arc_tangent(Machine&, Arguments arguments) {
  return Value::real(std::atan(to_double(*arguments[0])));
}

Value hex(Machine&, Arguments arguments) {
  return based_text(*arguments[0], 16);
}
Value octal(Machine&, Arguments arguments) {
  return based_text(*arguments[0], 8);
}

Value rgb(Machine&, Arguments arguments) {
  std::int32_t color = 0;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::int32_t part = to_integer(*arguments[i]);
    if (part < 0) raise(errors::kInvalidCall);
    color |= std::min(part, 255) << (8 * i);
  }
  return Value::long_integer(color);
}

Value random(Machine& machine, Arguments arguments) {
  const float seed = given(arguments, 0) ? to_single(*arguments[0]) : 1.0F;
  if (seed < 0) return Value::single(machine.random().restart(seed));
  if (seed == 0) return Value::single(machine.random().last());
  return Value::single(machine.random().next());
}

Value randomize(Machine& machine, Arguments arguments) {
  const double seed =
      given(arguments, 0) ? to_double(*arguments[0]) : to_double(timer(machine, {}));
  machine.random().randomize(seed);
  return Value();
}

}  // namespace rk::vbscript::functions
