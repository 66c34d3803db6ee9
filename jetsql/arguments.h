// How the functions read what they are given and set what they answer, and the tables of the single
// source files. For functions_*.cc only. Thread rule: pure.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "jetsql/functions.h"

namespace rk::jetsql {

using Arguments = std::span<const Argument>;

bool any_null(Arguments arguments);

// A number, a text that is one, or a date as its days. Raises kTypeMismatch.
double number_argument(const Argument& argument);
// The same, rounded to a whole number.
std::int64_t whole_argument(const Argument& argument);
// Days: a date's text, or a number as it is. Raises kTypeMismatch.
double days_argument(const Argument& argument);
// Numbers become their text. Raises kTypeMismatch for a blob.
std::string text_argument(const Argument& argument);

void answer_number(Answer& answer, double value);
void answer_whole(Answer& answer, std::int64_t value);
void answer_flag(Answer& answer, bool value);
void answer_text(Answer& answer, std::string value);
void answer_date(Answer& answer, double days);
void answer_same(Answer& answer, const Argument& argument);

// Format's second argument.
std::string formatted(const Argument& value, std::string_view pattern);

// Text as 16-bit units, in which lengths and cuts count, and back; a half of a pair that stands
// alone survives both ways.
std::u16string units_of(std::string_view text);
std::string text_of_units(std::u16string_view units);

std::span<const Function> text_functions();
std::span<const Function> date_functions();
std::span<const Function> number_functions();

}  // namespace rk::jetsql
