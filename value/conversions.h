// Conversions between the kinds of values, by the language's rules.
//
// Three rules for texts, three functions: to_text raises 94 on Null, try_text answers nothing for
// it, joined_text reads it as "" (as "&" does). Numbers raise 94 on Null, 13 on a text that is no
// number and on objects and arrays, 6 where the target is too narrow; halves round to even.
// An object value stands for its default member.
#ifndef RK_VALUE_CONVERSIONS_H_
#define RK_VALUE_CONVERSIONS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "value/value.h"

namespace rk {

Text to_text(const Value& value);
std::optional<Text> try_text(const Value& value);  // nothing for Null only
Text joined_text(const Value& value);
// Appends the text of a value without making it first; Null appends nothing.
void append_text(std::string& out, const Value& value);

bool to_boolean(const Value& value);
std::uint8_t to_byte(const Value& value);
std::int16_t to_integer(const Value& value);
std::int32_t to_long(const Value& value);
float to_single(const Value& value);
double to_double(const Value& value);
std::int64_t to_currency(const Value& value);  // in ten-thousandths
// The same of a number; nothing where it is too large or none.
std::optional<std::int64_t> currency_of(double number);
double to_date(const Value& value);  // in days; a text is read as a date, then as a number

// The value of `value - 0`: a number of the kind that the language gives it; Null stays Null.
Value to_number(const Value& value);

// The object's default member, again and again until it is no object; 91 for Nothing.
Value plain_value(const Value& value);

// Whether IsNumeric says so: Empty is, Null and dates are not.
bool is_numeric(const Value& value);

// Decimal texts as values show them: the shortest, 15 significant digits at most (7 for Single).
std::string number_text(double number);
std::string single_text(float number);
std::string currency_text(std::int64_t scaled);
// yyyy-mm-dd hh:mm:ss, without the time at midnight; a time of day without a date (day 0) alone.
std::string date_text(double days);

// Reads all of a text as a number: blanks around it, a sign before or behind, brackets for minus,
// "," between digits, a decimal point, an exponent, &H and &O. Nothing where it is none.
std::optional<double> parse_number(std::string_view text);
// Whether it reads so; a number past the largest Double is none, and nothing is raised.
bool is_number(std::string_view text);
// The same as ten-thousandths, exact to the last digit; halves go to the even neighbour.
std::optional<std::int64_t> parse_currency(std::string_view text);

}  // namespace rk

#endif  // RK_VALUE_CONVERSIONS_H_
