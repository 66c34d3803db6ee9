#include "value/conversions.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "value/array.h"
#include "value/dates.h"
#include "value/script_error.h"

namespace rk {

namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;

// A default member that answers an object again and again is followed so far.
constexpr int kMaxDefaultMembers = 16;

// "%.{digits}G" without the locale: the mantissa without trailing zeros, an exponent of two
// digits at least, written out below 10^digits and down to 10^-4.
std::string general_text(double number, int digits) {
  if (number == 0) return "0";  // also for minus zero
  if (std::isinf(number)) return number > 0 ? "1.#INF" : "-1.#INF";
  if (std::isnan(number)) return "-1.#IND";
  std::array<char, 64> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                 std::chars_format::general, digits);
  std::string text(buffer.data(), end.ptr);
  if (const std::size_t e = text.find('e'); e != std::string::npos) text[e] = 'E';
  return text;
}

std::string whole_text(std::int64_t number) {
  std::array<char, 24> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return std::string(buffer.data(), end.ptr);
}

// Halves go to the even neighbour.
double round_half_even(double number) noexcept {
  return std::nearbyint(number);
}

template <class Whole>
Whole narrowed(double number) {
  const double rounded = round_half_even(number);
  // Written so that a NaN overflows too.
  if (!(rounded >= static_cast<double>(std::numeric_limits<Whole>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Whole>::max()))) {
    raise(errors::kOverflow);
  }
  return static_cast<Whole>(rounded);
}

double number_of_text(std::string_view text) {
  const std::optional<double> number = parse_number(text);
  if (!number) raise(errors::kTypeMismatch);
  return *number;
}

// What is text already is not copied.
Text text_of(const Value& value) {
  if (value.is_text()) return value.as_text();
  std::string out;
  append_text(out, value);
  return Text(out);
}

}  // namespace

Value plain_value(const Value& value) {
  Value plain = value;
  for (int i = 0; plain.is_object(); ++i) {
    Object* object = plain.as_object();
    if (object == nullptr) raise(errors::kObjectNotSet);
    if (i == kMaxDefaultMembers) raise(errors::kNoSuchMember);
    plain = object->invoke(kDefaultMember, CallKind::Get, {});
  }
  return plain;
}

void append_text(std::string& out, const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Empty:
    case Value::Kind::Null:
      return;
    case Value::Kind::Boolean:
      out += value.as_boolean() ? "True" : "False";
      return;
    case Value::Kind::Byte:
      out += whole_text(value.as_byte());
      return;
    case Value::Kind::Integer:
      out += whole_text(value.as_integer());
      return;
    case Value::Kind::Long:
      out += whole_text(value.as_long());
      return;
    case Value::Kind::Single:
      out += single_text(value.as_single());
      return;
    case Value::Kind::Double:
      out += number_text(value.as_double());
      return;
    case Value::Kind::Currency:
      out += currency_text(value.as_currency());
      return;
    case Value::Kind::Date:
      out += date_text(value.as_date());
      return;
    case Value::Kind::String:
      out += value.as_view();
      return;
    case Value::Kind::Object:
      append_text(out, plain_value(value));
      return;
    case Value::Kind::Error:
      if (value.is_missing()) raise(errors::kTypeMismatch);
      out += "Error " + whole_text(value.as_error());
      return;
    case Value::Kind::Array:
      // A byte array is a text's bytes, as what Request.BinaryRead gives is used with MidB.
      if (!value.as_array().holds_bytes()) raise(errors::kTypeMismatch);
      out += Text::from_bytes(value.as_array().bytes()).view();
      return;
  }
}

Text joined_text(const Value& value) {
  if (value.is_null()) return Text();
  if (value.is_object()) return joined_text(plain_value(value));
  if (value.is_array() && value.as_array().holds_bytes()) {
    return Text::from_bytes(value.as_array().bytes());  // keeps half a unit at the end
  }
  return text_of(value);
}

std::optional<Text> try_text(const Value& value) {
  if (value.is_null()) return std::nullopt;
  if (value.is_object()) return try_text(plain_value(value));
  return joined_text(value);
}

Text to_text(const Value& value) {
  std::optional<Text> text = try_text(value);
  if (!text) raise(errors::kInvalidNull);
  return *std::move(text);
}

double to_double(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Empty:
      return 0;
    case Value::Kind::Null:
      raise(errors::kInvalidNull);
    case Value::Kind::Boolean:
      return value.as_boolean() ? -1 : 0;
    case Value::Kind::Byte:
      return value.as_byte();
    case Value::Kind::Integer:
      return value.as_integer();
    case Value::Kind::Long:
      return value.as_long();
    case Value::Kind::Single:
      return static_cast<double>(value.as_single());
    case Value::Kind::Double:
      return value.as_double();
    case Value::Kind::Currency:
      return static_cast<double>(value.as_currency()) / kCurrencyScale;
    case Value::Kind::Date:
      return value.as_date();
    case Value::Kind::String:
      return number_of_text(value.as_view());
    case Value::Kind::Object:
      return to_double(plain_value(value));
    case Value::Kind::Error:
    case Value::Kind::Array:
      break;
  }
  raise(errors::kTypeMismatch);
}

bool to_boolean(const Value& value) {
  if (value.kind() == Value::Kind::Boolean) return value.as_boolean();
  if (value.is_object()) return to_boolean(plain_value(value));
  if (value.is_text()) {
    // With # around it as files written by Write # have it.
    for (const std::string_view word : {"True", "#TRUE#"}) {
      if (equal_ignoring_case(value.as_view(), word)) return true;
    }
    for (const std::string_view word : {"False", "#FALSE#"}) {
      if (equal_ignoring_case(value.as_view(), word)) return false;
    }
  }
  return to_double(value) != 0;
}

std::uint8_t to_byte(const Value& value) {
  return narrowed<std::uint8_t>(to_double(value));
}
std::int16_t to_integer(const Value& value) {
  if (value.kind() == Value::Kind::Integer) return value.as_integer();
  return narrowed<std::int16_t>(to_double(value));
}
std::int32_t to_long(const Value& value) {
  if (value.kind() == Value::Kind::Long) return value.as_long();
  if (value.kind() == Value::Kind::Integer) return value.as_integer();
  return narrowed<std::int32_t>(to_double(value));
}

float to_single(const Value& value) {
  const double number = to_double(value);
  if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max())) {
    raise(errors::kOverflow);
  }
  return static_cast<float>(number);
}

std::int64_t to_currency(const Value& value) {
  if (value.kind() == Value::Kind::Currency) return value.as_currency();
  if (value.is_object()) return to_currency(plain_value(value));
  if (value.is_text()) {
    // By way of a Double the last digits of a large amount would be lost.
    const std::optional<std::int64_t> scaled = parse_currency(value.as_view());
    if (!scaled) raise(errors::kTypeMismatch);
    return *scaled;
  }
  const std::optional<std::int64_t> scaled = currency_of(to_double(value));
  if (!scaled) raise(errors::kOverflow);
  return *scaled;
}

std::optional<std::int64_t> currency_of(double number) {
  // As a Double the product of 0.00005 is the half that was written; past 2^53 it would not be
  // whole to the last digit, which a long double is as far as a Currency goes.
  constexpr double kWholeDouble = 9007199254740992.0;
  const double product = number * static_cast<double>(kCurrencyScale);
  if (std::abs(product) < kWholeDouble) {
    return static_cast<std::int64_t>(round_half_even(product));
  }
  const long double scaled =
      std::nearbyint(static_cast<long double>(number) * static_cast<long double>(kCurrencyScale));
  // 2^63 itself is no longer a Currency.
  constexpr long double kLimit = 9223372036854775808.0L;
  if (!(scaled >= -kLimit && scaled < kLimit)) return std::nullopt;
  return static_cast<std::int64_t>(scaled);
}

double to_date(const Value& value) {
  if (value.kind() == Value::Kind::Date) return value.as_date();
  if (value.is_object()) return to_date(plain_value(value));
  if (value.is_text()) {
    if (const auto date = parse_date(value.as_view())) return *date;
  }
  const double days = to_double(value);
  if (days >= kFirstDate && days < kPastLastDate) return days;
  raise(value.is_text() ? errors::kTypeMismatch : errors::kOverflow);
}

Value to_number(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Empty:
      return Value::integer(0);
    case Value::Kind::Boolean:
      return Value::integer(value.as_boolean() ? -1 : 0);
    case Value::Kind::String:
      return Value::real(number_of_text(value.as_view()));
    case Value::Kind::Object:
      return to_number(plain_value(value));
    case Value::Kind::Byte:
      return Value::integer(value.as_byte());
    case Value::Kind::Error:
    case Value::Kind::Array:
      raise(errors::kTypeMismatch);
    default:
      return value;
  }
}

bool is_numeric(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Null:
    case Value::Kind::Date:
    case Value::Kind::Error:
    case Value::Kind::Array:
      return false;
    case Value::Kind::String:
      return is_number(value.as_view());
    case Value::Kind::Object:
      return value.as_object() != nullptr && is_numeric(plain_value(value));
    default:
      return true;
  }
}

std::string number_text(double number) {
  // OPTIMIZATION: whole numbers below 10^15 have no other text than their digits.
  if (number == std::trunc(number) && std::abs(number) < 1e15) {
    return whole_text(static_cast<std::int64_t>(number));
  }
  return general_text(number, kDoubleDigits);
}

std::string single_text(float number) {
  return general_text(static_cast<double>(number), kSingleDigits);
}

std::string currency_text(std::int64_t scaled) {
  const bool negative = scaled < 0;
  const std::uint64_t size =
      negative ? 0 - static_cast<std::uint64_t>(scaled) : static_cast<std::uint64_t>(scaled);
  constexpr auto kScale = static_cast<std::uint64_t>(kCurrencyScale);
  std::string text = negative ? "-" : "";
  text += std::to_string(size / kScale);
  if (size % kScale == 0) return text;
  std::string decimals = std::to_string(kScale + size % kScale).substr(1);
  decimals.erase(decimals.find_last_not_of('0') + 1);
  return text + "." + decimals;
}

std::string date_text(double days) {
  if (!(days > kFirstDate - 1 && days < kPastLastDate)) raise(errors::kInvalidCall);
  const CalendarTime at = calendar_time(days);
  const bool has_time = at.hour != 0 || at.minute != 0 || at.second != 0;
  const bool has_date = day_number(at.year, at.month, at.day) != 0;
  std::array<char, 40> buffer;
  std::string text;
  if (has_date) {
    std::snprintf(buffer.data(), buffer.size(), "%04d-%02d-%02d", at.year, at.month, at.day);
    text = buffer.data();
  }
  if (has_time || !has_date) {
    std::snprintf(buffer.data(), buffer.size(), "%s%02d:%02d:%02d", has_date ? " " : "", at.hour,
                  at.minute, at.second);
    text += buffer.data();
  }
  return text;
}

}  // namespace rk
