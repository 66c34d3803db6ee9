// The operators of the page language on loosely typed values.
//
// A result has the widest kind of its operands and widens further where it does not fit: Byte,
// Integer, Long, then Double. Null beside any operand gives Null; a text is read as a number; Empty
// is 0; an object stands for its default member. Raises 13 for a text that is no number and for
// arrays, 6 past the widest kind, 11 for a division by zero.
#ifndef RK_VALUE_ARITHMETIC_H_
#define RK_VALUE_ARITHMETIC_H_

#include "value/value.h"

namespace rk {

Value add(const Value& a, const Value& b);  // two texts are joined
Value subtract(const Value& a, const Value& b);
Value multiply(const Value& a, const Value& b);
Value divide(const Value& a, const Value& b);
Value integer_divide(const Value& a, const Value& b);  // operands are rounded first, halves to even
Value modulo(const Value& a, const Value& b);          // the same; the sign is the first operand's
Value power(const Value& a, const Value& b);           // a Double; 5 where there is no real result
Value negate(const Value& a);
Value concatenate(const Value& a, const Value& b);  // Null only where both are

// By bits; a Boolean where both operands are, else the wider of the whole kinds.
Value logical_not(const Value& a);
Value logical_and(const Value& a, const Value& b);
Value logical_or(const Value& a, const Value& b);
Value logical_xor(const Value& a, const Value& b);
Value logical_eqv(const Value& a, const Value& b);
Value logical_imp(const Value& a, const Value& b);

// The smallest of Integer, Long and Double that holds a whole number.
Value whole_number(std::int64_t number);

}  // namespace rk

#endif  // RK_VALUE_ARITHMETIC_H_
