// Numbers and texts: how a number is written, which texts are numbers, and Jet's rounding.
// Thread rule: pure.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rk::jetsql {

// The shortest decimal text, 15 significant digits at most: 100, 99.5, 0.5, 1E+20.
std::string number_text(double value);

// A sign, digits, a decimal part, an exponent, blanks around; none for anything else.
std::optional<double> parse_number(std::string_view text);

// Halves go to the even neighbour.
double round_half_even(double value);

// Raises SqlError (kOverflow) where it does not fit.
std::int64_t whole_number(double value);

// With the four decimals of a CURRENCY, as far as a double holds them. Raises SqlError (kOverflow)
// where a CURRENCY does not hold it.
double amount(double value);

}  // namespace rk::jetsql
