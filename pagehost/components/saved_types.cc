#include "pagehost/components/saved_types.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <optional>

#include "pagehost/components/base64.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/dates.h"

namespace rk::pagehost {
namespace {

using platform::ColumnType;

// The first of a data type is what its name alone means.
constexpr SavedType kTypes[] = {
    {AdoType::VarWChar, "string", "", 0},
    {AdoType::LongVarWChar, "string", "", 536'870'910, false, true},
    {AdoType::WChar, "string", "", 0, true},
    {AdoType::VarChar, "string", "str", 0},
    {AdoType::Char, "string", "str", 0, true},
    {AdoType::Integer, "int", "", 4, true},
    {AdoType::SmallInt, "i2", "", 2, true},
    {AdoType::TinyInt, "i1", "", 1, true},
    {AdoType::BigInt, "i8", "", 8, true},
    {AdoType::UnsignedTinyInt, "ui1", "", 1, true},
    {AdoType::UnsignedSmallInt, "ui2", "", 2, true},
    {AdoType::UnsignedInt, "ui4", "", 4, true},
    {AdoType::Double, "float", "", 8, true},
    {AdoType::Single, "r4", "", 4, true},
    {AdoType::Numeric, "number", "numeric", 19, true},
    {AdoType::Decimal, "number", "decimal", 16, true},
    {AdoType::Currency, "number", "currency", 8, true},
    {AdoType::Boolean, "boolean", "", 2, true},
    {AdoType::DbTimeStamp, "dateTime", "timestamp", 16, true},
    {AdoType::Date, "dateTime", "variantdate", 16, true},
    {AdoType::DbDate, "date", "", 6, true},
    {AdoType::DbTime, "time", "", 6, true},
    {AdoType::VarBinary, "bin.hex", "", 0},
    {AdoType::LongVarBinary, "bin.hex", "", 1'073'741'823, false, true},
    {AdoType::Binary, "bin.hex", "", 0, true},
    {AdoType::Variant, "string", "variant", 0},
};

// Every digit that it takes to read the same number again.
template <class Number>
std::string whole_text(Number number) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number);
  return {text.data(), end.ptr};
}

std::string number_in_full(const Value& value) {
  if (value.kind() == Value::Kind::Single) return whole_text(value.as_single());
  if (value.kind() == Value::Kind::Double) return whole_text(value.as_double());
  return joined_text(value).string();
}

std::string time_text(AdoType type, double days) {
  const CalendarTime time = calendar_time(days);
  std::array<char, 80> date{};
  std::array<char, 80> hours{};
  std::snprintf(date.data(), date.size(), "%04d-%02d-%02d", time.year, time.month, time.day);
  std::snprintf(hours.data(), hours.size(), "%02d:%02d:%02d", time.hour, time.minute, time.second);
  if (type == AdoType::DbDate) return date.data();
  if (type == AdoType::DbTime) return hours.data();
  return std::string(date.data()) + "T" + hours.data();
}

// The next number of a text; nothing where there is no digit.
std::optional<int> next_number(std::string_view& text) {
  int number = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end.ec != std::errc()) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
  return number;
}

// Three numbers with this sign between them.
bool takes_three(std::string_view& text, char between, int& first, int& second, int& third) {
  for (int* const part : {&first, &second, &third}) {
    if (part != &first) {
      if (text.empty() || text.front() != between) return false;
      text.remove_prefix(1);
    }
    const std::optional<int> number = next_number(text);
    if (!number) return false;
    *part = *number;
  }
  return true;
}

// yyyy-mm-dd, hh:mm:ss, or both with a T between; parts of a second are left off.
double days_of(std::string_view text) {
  CalendarTime time;
  const std::size_t middle = text.find('T');
  const bool has_date = text.find('-') != std::string_view::npos;
  const bool has_time = middle != std::string_view::npos;
  std::string_view date = has_date ? text.substr(0, middle) : std::string_view();
  std::string_view hours = !has_date ? text : text.substr(has_time ? middle + 1 : text.size());
  if (has_date && !takes_three(date, '-', time.year, time.month, time.day)) {
    raise(errors::kTypeMismatch);
  }
  if ((has_time || !has_date) && !takes_three(hours, ':', time.hour, time.minute, time.second)) {
    raise(errors::kTypeMismatch);
  }
  if (time.month < 1 || time.month > 12 || time.day < 1 || time.day > 31) {
    raise(errors::kTypeMismatch);
  }
  return date_value(time);
}

double number_of(std::string_view text) {
  double number = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end.ec != std::errc() || end.ptr != text.data() + text.size()) raise(errors::kTypeMismatch);
  return number;
}

Value boolean_of(std::string_view text) {
  const std::string lower = lowered_ascii(text);
  if (lower == "true" || lower == "1" || lower == "-1") return Value::boolean(true);
  if (lower == "false" || lower == "0") return Value::boolean(false);
  raise(errors::kTypeMismatch);
}

}  // namespace

const SavedType& saved_type(AdoType type) {
  for (const SavedType& each : kTypes) {
    if (each.type == type) return each;
  }
  return kTypes[1];
}

AdoType type_of_saved(std::string_view data_type, std::string_view database_type, bool fixed,
                      bool is_long) {
  const SavedType* nearest = nullptr;
  int best = -1;
  for (const SavedType& each : kTypes) {
    if (each.data_type != data_type) continue;
    const int alike = (each.database_type == database_type ? 4 : 0) +
                      (each.is_long == is_long ? 2 : 0) + (each.fixed == fixed ? 1 : 0);
    if (alike > best) {
      best = alike;
      nearest = &each;
    }
  }
  return nearest == nullptr ? AdoType::VarWChar : nearest->type;
}

std::string saved_value(AdoType type, const Value& value) {
  switch (column_type_of(type)) {
    case ColumnType::Integer:
    case ColumnType::Double:
      return number_in_full(value);
    case ColumnType::Boolean:
      return to_boolean(value) ? "True" : "False";
    case ColumnType::Date:
      return time_text(type, to_date(value));
    case ColumnType::Bytes:
      return value.is_array() ? hex_text(value.as_array().bytes()) : "";
    default:
      return joined_text(value).string();
  }
}

Value value_of_saved(AdoType type, std::string_view text) {
  switch (column_type_of(type)) {
    case ColumnType::Integer:
      return value_as(ColumnType::Integer, Value::real(number_of(text)));
    case ColumnType::Double:
      return Value::real(number_of(text));
    case ColumnType::Currency: {
      const std::optional<std::int64_t> amount = parse_currency(text);
      if (!amount) raise(errors::kTypeMismatch);
      return Value::currency(*amount);
    }
    case ColumnType::Boolean:
      return boolean_of(text);
    case ColumnType::Date:
      return Value::date(days_of(text));
    case ColumnType::Bytes: {
      std::optional<std::string> bytes = hex_bytes(text);
      if (!bytes) raise(errors::kTypeMismatch);
      return Value::array(Array::of_bytes(*std::move(bytes)));
    }
    default:
      return Value::text(text);
  }
}

}  // namespace rk::pagehost
