// Built-in functions on texts, in 16-bit units.

#include <algorithm>
#include <compare>
#include <limits>
#include <optional>
#include <span>
#include <utility>

#include "value/array.h"
#include "value/comparison.h"
#include "value/text.h"
#include "value/text_pieces.h"
#include "vbscript/built_in_functions.h"
#include "vbscript/machine.h"

namespace rk::vbscript::functions {

namespace {

// Where a text may not grow to: far more than a page, far less than what would harm the process.
constexpr std::int32_t kMostFilled = std::int32_t{1} << 28;

std::size_t length_argument(const Value& value) {
  const std::int32_t length = to_long(value);
  if (length < 0) raise(errors::kInvalidCall);
  return static_cast<std::size_t>(length);
}

std::size_t start_argument(const Value& value) {
  const std::int32_t start = to_long(value);
  if (start < 1) raise(errors::kInvalidCall);
  return static_cast<std::size_t>(start) - 1;
}

template <class Change>
Value changed(Arguments arguments, Change change) {
  const Value value = plain(*arguments[0]);
  if (value.is_null()) return value;
  return Value::text(Text(change(to_text(value).view())));
}

Value position(std::size_t at) {
  return Value::long_integer(static_cast<std::int32_t>(at));
}

}  // namespace

Value length(Machine&, Arguments arguments) {
  const Value value = plain(*arguments[0]);
  if (value.is_null()) return value;
  return position(to_text(value).length());
}

Value lower(Machine&, Arguments arguments) {
  return changed(arguments, lower_case);
}
Value upper(Machine&, Arguments arguments) {
  return changed(arguments, upper_case);
}
Value trim_left(Machine&, Arguments arguments) {
  return changed(arguments, without_leading_blanks);
}
Value trim_right(Machine&, Arguments arguments) {
  return changed(arguments, without_trailing_blanks);
}
Value trim(Machine&, Arguments arguments) {
  return changed(arguments, [](std::string_view text) {
    return without_trailing_blanks(without_leading_blanks(text));
  });
}

Value left(Machine&, Arguments arguments) {
  const Value value = plain(*arguments[0]);
  const std::size_t count = length_argument(*arguments[1]);
  if (value.is_null()) return value;
  return Value::text(to_text(value).mid(0, count));
}

Value right(Machine&, Arguments arguments) {
  const Value value = plain(*arguments[0]);
  const std::size_t count = length_argument(*arguments[1]);
  if (value.is_null()) return value;
  const Text text = to_text(value);
  const std::size_t length = text.length();
  return Value::text(text.mid(length - std::min(count, length), count));
}

Value mid(Machine&, Arguments arguments) {
  const std::size_t start = start_argument(*arguments[1]);
  const std::size_t count = given(arguments, 2) ? length_argument(*arguments[2])
                                                : std::numeric_limits<std::size_t>::max();
  if (arguments[0]->is_text()) return Value::text(arguments[0]->as_text().mid(start, count));
  const Value value = plain(*arguments[0]);
  if (value.is_null()) return value;
  return Value::text(to_text(value).mid(start, count));
}

// --- looking for texts --------------------------------------------------------------------------

Value in_str(Machine&, Arguments arguments) {
  const std::size_t first = arguments.size() > 2 ? 1 : 0;
  const std::size_t start = first == 1 && given(arguments, 0) ? start_argument(*arguments[0]) : 0;
  const Letters letters = letters_argument(arguments, 3);
  const Value where = plain(*arguments[first]);
  const Value what = plain(*arguments[first + 1]);
  if (where.is_null() || what.is_null()) return Value::null();
  const Text text = to_text(where);
  const Text sought = to_text(what);
  if (text.empty() || start >= text.length()) return position(0);
  const std::size_t from = text.offset_of_unit(start);
  const std::size_t at = find_text(text.view(), sought.view(), from, letters);
  if (at == std::string_view::npos) return position(0);
  // Counted on from the start, so that a walk from place to place is linear in all.
  return position(start + unit_length(text.view().substr(from, at - from)) + 1);
}

Value in_str_rev(Machine&, Arguments arguments) {
  const Value where = plain(*arguments[0]);
  const Value what = plain(*arguments[1]);
  const std::int32_t start = long_or(arguments, 2, -1);
  const Letters letters = letters_argument(arguments, 3);
  if (start == 0 || start < -1) raise(errors::kInvalidCall);
  const Text text = to_text(where);
  const Text sought = to_text(what);
  const std::size_t length = text.length();
  const std::size_t end = start < 0 ? length : static_cast<std::size_t>(start);
  if (text.empty() || end > length) return position(0);
  if (sought.empty()) return position(end);
  const std::size_t at =
      find_last_text(text.view(), sought.view(), text.offset_of_unit(end), letters);
  return position(at == std::string_view::npos ? 0 : text.unit_of_offset(at) + 1);
}

Value str_comp(Machine&, Arguments arguments) {
  const Letters letters = letters_argument(arguments, 2);
  const Value a = plain(*arguments[0]);
  const Value b = plain(*arguments[1]);
  if (a.is_null() || b.is_null()) return Value::null();
  const Text x = to_text(a);
  const Text y = to_text(b);
  const std::strong_ordering order = letters == Letters::Exact
                                         ? compare_text(x.view(), y.view())
                                         : compare_text(lower_case(x.view()), lower_case(y.view()));
  return Value::integer(std::is_lt(order) ? -1 : std::is_gt(order) ? 1 : 0);
}

Value replace(Machine&, Arguments arguments) {
  const Text text = to_text(*arguments[0]);
  const Text sought = to_text(*arguments[1]);
  const Text with = to_text(*arguments[2]);
  const std::size_t start = given(arguments, 3) ? start_argument(*arguments[3]) : 0;
  const std::int32_t count = long_or(arguments, 4, -1);
  const Letters letters = letters_argument(arguments, 5);
  if (count < -1) raise(errors::kInvalidCall);
  if (start >= text.length()) return Value::text(Text());
  const std::size_t limit =
      count < 0 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(count);
  const std::string_view rest = text.view().substr(text.offset_of_unit(start));
  return Value::text(replaced_text(rest, sought.view(), with.view(), limit, letters));
}

// --- parts --------------------------------------------------------------------------------------

Value split(Machine&, Arguments arguments) {
  const Text text = to_text(*arguments[0]);
  const Text delimiter = given(arguments, 1) ? to_text(*arguments[1]) : Text(" ");
  const std::int32_t count = long_or(arguments, 2, -1);
  const Letters letters = letters_argument(arguments, 3);
  if (count < -1) raise(errors::kInvalidCall);
  const std::size_t limit =
      count < 0 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(count);
  std::vector<Value> parts;
  if (!text.empty()) parts = split_text(text.view(), delimiter.view(), limit, letters);
  return Value::array(Array::of(std::move(parts)));
}

namespace {

const Array& row_argument(const Value& value) {
  if (!value.is_array() || value.as_array().holds_bytes()) raise(errors::kTypeMismatch);
  if (value.as_array().dimensions() != 1) {
    raise(value.as_array().dimensions() == 0 ? errors::kSubscriptOutOfRange
                                             : errors::kTypeMismatch);
  }
  return value.as_array();
}

bool is_text(const Value& value) {
  return value.is_text();
}

// The bytes that joining will take, as the first texts say.
std::size_t expected_bytes(std::span<const Value> texts, std::size_t delimiter) {
  constexpr std::size_t kSample = 64;
  const auto sample = texts.first(std::min(kSample, texts.size()));
  std::size_t bytes = 0;
  for (const Value& text : sample) bytes += text.as_view().size() + delimiter;
  return bytes * texts.size() / std::max<std::size_t>(1, sample.size()) / 16 * 17;
}

// OPTIMIZATION: looks at each text once. Nothing where one ends in half a unit.
std::optional<Text> joined_texts(std::span<const Value> texts, std::string_view delimiter) {
  TextPieces joined(expected_bytes(texts, delimiter.size()));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (texts[i].as_text().trailing_byte()) return std::nullopt;
    if (i > 0) joined.add(delimiter);
    joined.add(texts[i].as_view());
  }
  return std::move(joined).text();
}

}  // namespace

Value join(Machine&, Arguments arguments) {
  // A copy: the default member of an object among the arguments may change the array.
  const Value kept = *arguments[0];  // NOLINT(performance-unnecessary-copy-initialization)
  const auto elements = row_argument(kept).elements();
  const Text delimiter = given(arguments, 1) ? to_text(*arguments[1]) : Text(" ");
  for (const Value& element : elements) {
    if (element.is_null() || element.is_array()) raise(errors::kTypeMismatch);
  }
  if (!delimiter.trailing_byte() && std::all_of(elements.begin(), elements.end(), is_text)) {
    if (auto joined = joined_texts(elements, delimiter.view())) {
      return Value::text(*std::move(joined));
    }
  }
  Text joined;
  bool first = true;
  for (const Value& element : elements) {
    if (!first) joined.append(delimiter);
    first = false;
    joined.append(to_text(element));
  }
  return Value::text(std::move(joined));
}

Value filter(Machine&, Arguments arguments) {
  // A copy, as in join.
  const Value all = *arguments[0];  // NOLINT(performance-unnecessary-copy-initialization)
  const Array& row = row_argument(all);
  const Text sought = to_text(*arguments[1]);
  const bool includes = given(arguments, 2) ? to_boolean(*arguments[2]) : true;
  const Letters letters = letters_argument(arguments, 3);
  std::vector<Value> kept;
  for (const Value& element : row.elements()) {
    const Text text = to_text(element);
    const bool has = find_text(text.view(), sought.view(), 0, letters) != std::string_view::npos;
    if (has == includes) kept.push_back(Value::text(text));
  }
  return Value::array(Array::of(std::move(kept)));
}

// --- characters ---------------------------------------------------------------------------------

Value space(Machine&, Arguments arguments) {
  const std::size_t count = length_argument(*arguments[0]);
  if (count > kMostFilled) raise(errors::kOutOfStringSpace);
  return Value::text(Text(std::string(count, ' ')));
}

Value string(Machine&, Arguments arguments) {
  const std::size_t count = length_argument(*arguments[0]);
  if (count > kMostFilled) raise(errors::kOutOfStringSpace);
  const Value character = plain(*arguments[1]);
  if (character.is_null()) return character;
  std::string one;
  if (character.is_text()) {
    const Text text = character.as_text();
    if (text.length() == 0) raise(errors::kInvalidCall);
    one = text.mid(0, 1).string();
  } else {
    append_unit(one, static_cast<char16_t>(to_long(character) & 0xFF));
  }
  std::string filled;
  filled.reserve(count * one.size());
  for (std::size_t i = 0; i < count; ++i) filled += one;
  return Value::text(Text(filled));
}

Value str_reverse(Machine&, Arguments arguments) {
  return Value::text(Text(reversed_text(to_text(*arguments[0]).view())));
}

Value asc_w(Machine&, Arguments arguments) {
  const Text text = to_text(*arguments[0]);
  if (text.length() == 0) raise(errors::kInvalidCall);
  return Value::integer(static_cast<std::int16_t>(text.unit(0)));
}

Value chr_w(Machine&, Arguments arguments) {
  const std::int32_t unit = to_long(*arguments[0]);
  if (unit < -32768 || unit > 65535) raise(errors::kInvalidCall);
  std::string utf8;
  append_unit(utf8, static_cast<char16_t>(unit));
  return Value::text(Text(utf8));
}

// In the ANSI code page; a character of two bytes is a number of 16 bits with its sign.
Value asc(Machine& machine, Arguments arguments) {
  const Text text = to_text(*arguments[0]);
  if (text.length() == 0) raise(errors::kInvalidCall);
  const char16_t unit = text.unit(0);
  const Services& services = machine.services();
  if (unit < 0x80 || services.code_pages == nullptr) {
    return Value::integer(static_cast<std::int16_t>(unit));
  }
  const std::string bytes =
      services.code_pages->from_utf8(text.mid(0, 1).view(), services.ansi_code_page);
  unsigned code = 0;
  for (std::size_t i = 0; i < bytes.size() && i < 2; ++i) {
    code = code << 8 | static_cast<unsigned char>(bytes[i]);
  }
  return Value::integer(static_cast<std::int16_t>(code));
}

Value chr(Machine& machine, Arguments arguments) {
  const std::int32_t number = to_long(*arguments[0]);
  if (number < -32768 || number > 65535) raise(errors::kInvalidCall);
  const auto code = static_cast<unsigned>(number) & 0xFFFF;
  const Services& services = machine.services();
  std::string utf8;
  if (code >= 0x80 && services.code_pages != nullptr) {
    std::string bytes;
    if (code > 0xFF) bytes += static_cast<char>(code >> 8);
    bytes += static_cast<char>(code & 0xFF);
    std::optional<std::size_t> bad;
    utf8 = services.code_pages->to_utf8(bytes, services.ansi_code_page, &bad);
    if (!bad) return Value::text(Text(utf8));
    utf8.clear();
  } else if (code > 0xFF) {
    raise(errors::kInvalidCall);
  }
  append_unit(utf8, static_cast<char16_t>(code));
  return Value::text(Text(utf8));
}

// --- bytes --------------------------------------------------------------------------------------

Value length_b(Machine&, Arguments arguments) {
  const Value value = plain(*arguments[0]);
  if (value.is_null()) return value;
  return position(to_text(value).byte_length());
}

Value left_b(Machine&, Arguments arguments) {
  const Value value = plain(*arguments[0]);
  const std::size_t count = length_argument(*arguments[1]);
  if (value.is_null()) return value;
  return Value::text(to_text(value).byte_mid(0, count));
}

Value right_b(Machine&, Arguments arguments) {
  const Value value = plain(*arguments[0]);
  const std::size_t count = length_argument(*arguments[1]);
  if (value.is_null()) return value;
  const Text text = to_text(value);
  const std::size_t length = text.byte_length();
  return Value::text(text.byte_mid(length - std::min(count, length), count));
}

Value mid_b(Machine&, Arguments arguments) {
  const std::size_t start = start_argument(*arguments[1]);
  const std::size_t count = given(arguments, 2) ? length_argument(*arguments[2])
                                                : std::numeric_limits<std::size_t>::max();
  const Value value = plain(*arguments[0]);
  if (value.is_null()) return value;
  // OPTIMIZATION: bytes of an array are cut where they lie, instead of made to a text first.
  if (value.is_array() && value.as_array().holds_bytes()) {
    const std::string_view bytes = value.as_array().bytes();
    return Value::text(Text::from_bytes(start >= bytes.size() ? "" : bytes.substr(start, count)));
  }
  return Value::text(to_text(value).byte_mid(start, count));
}

Value asc_b(Machine&, Arguments arguments) {
  const Text text = to_text(*arguments[0]);
  if (text.byte_length() == 0) raise(errors::kInvalidCall);
  return Value::integer(text.byte(0));
}

Value chr_b(Machine&, Arguments arguments) {
  const std::int32_t code = to_long(*arguments[0]);
  if (code < 0 || code > 255) raise(errors::kOverflow);
  const char byte = static_cast<char>(code);
  return Value::text(Text::from_bytes({&byte, 1}));
}

Value in_str_b(Machine&, Arguments arguments) {
  const std::size_t first = arguments.size() > 2 ? 1 : 0;
  const std::size_t start = first == 1 && given(arguments, 0) ? start_argument(*arguments[0]) : 0;
  const Value where = plain(*arguments[first]);
  const Value what = plain(*arguments[first + 1]);
  if (where.is_null() || what.is_null()) return Value::null();
  const std::string bytes = to_text(where).bytes();
  if (bytes.empty() || start >= bytes.size()) return position(0);
  const std::size_t at = bytes.find(to_text(what).bytes(), start);
  return position(at == std::string::npos ? 0 : at + 1);
}

// --- escapes ------------------------------------------------------------------------------------

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

bool stays_as_it_is(char16_t unit) {
  if (unit >= 0x80) return false;
  const char c = static_cast<char>(unit);
  const char lower = ascii_lower(c);
  return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') ||
         std::string_view("*@-_+./").find(c) != std::string_view::npos;
}

int hex_value(char16_t unit) {
  if (unit >= 0x80) return -1;
  const char lower = ascii_lower(static_cast<char>(unit));
  if (lower >= '0' && lower <= '9') return lower - '0';
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The number in `count` hexadecimal digits, or -1.
int hex_at(const std::u16string& units, std::size_t at, std::size_t count) {
  if (at + count > units.size()) return -1;
  int number = 0;
  for (std::size_t i = at; i < at + count; ++i) {
    const int digit = hex_value(units[i]);
    if (digit < 0) return -1;
    number = number * 16 + digit;
  }
  return number;
}

}  // namespace

Value escape(Machine&, Arguments arguments) {
  std::string out;
  const Text text = to_text(*arguments[0]);
  for (const char16_t unit : text.units()) {
    if (stays_as_it_is(unit)) {
      out += static_cast<char>(unit);
      continue;
    }
    out += unit > 0xFF ? "%u" : "%";
    for (int shift = unit > 0xFF ? 12 : 4; shift >= 0; shift -= 4) {
      out += kHexDigits[unit >> shift & 0xF];
    }
  }
  return Value::text(Text(out));
}

Value unescape(Machine&, Arguments arguments) {
  const std::u16string units = to_text(*arguments[0]).units();
  std::u16string out;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const bool wide = units[i] == u'%' && i + 1 < units.size() && (units[i + 1] | 0x20) == u'u';
    const int number = units[i] != u'%' ? -1
                       : wide           ? hex_at(units, i + 2, 4)
                                        : hex_at(units, i + 1, 2);
    if (number < 0) {
      out += units[i];
    } else {
      out += static_cast<char16_t>(number);
      i += wide ? 5 : 2;
    }
  }
  return Value::text(Text::from_units(out));
}

}  // namespace rk::vbscript::functions
