#include <array>
#include <cmath>
#include <compare>
#include <iterator>
#include <span>
#include <vector>

#include "value/arithmetic.h"
#include "value/array.h"
#include "value/comparison.h"
#include "value/conversions.h"
#include "value/text_functions.h"
#include "vbscript/enumerations.h"
#include "vbscript/machine.h"

namespace rk::vbscript {

namespace {

using Kind = Value::Kind;

bool is_number(const Value& value) {
  return value.kind() >= Kind::Boolean && value.kind() <= Kind::Date;
}

bool holds(std::uint16_t n, std::partial_ordering order) {
  switch (static_cast<Relation>(n & kRelationMask)) {
    case Relation::Equal:
      return std::is_eq(order);
    case Relation::NotEqual:
      return std::is_neq(order);
    case Relation::Less:
      return std::is_lt(order);
    case Relation::Greater:
      return std::is_gt(order);
    case Relation::LessEqual:
      return std::is_lteq(order);
    case Relation::GreaterEqual:
      return std::is_gteq(order);
  }
  return false;
}

// A text beside a number that is written as a literal is read as a number; a number beside a text
// that is written as a literal is compared by its text.
std::partial_ordering literal_order(const Value& a, const Value& b, std::uint16_t n) {
  const bool number_is_literal =
      (a.is_text() && (n & kRightLiteral) != 0) || (b.is_text() && (n & kLeftLiteral) != 0);
  if (!number_is_literal) return joined_text(a).view() <=> joined_text(b).view();
  if ((n & kCaseTest) != 0) {
    const Value& text = a.is_text() ? a : b;
    if (!parse_number(text.as_view())) return std::partial_ordering::unordered;
  }
  return to_double(a) <=> to_double(b);
}

// Plain unless the array was dimensioned for good: a copy may be redimensioned.
Value copied(const Value& value) {
  if (!value.is_array() || !value.as_array().fixed()) return value;
  const Array& from = value.as_array();
  std::vector<std::int32_t> bounds;
  for (std::size_t i = 0; i < from.dimensions(); ++i) bounds.push_back(from.upper_bound(i));
  const Ref<Array> copy = Array::make(bounds);
  std::copy(from.elements().begin(), from.elements().end(), copy->elements().begin());
  return Value::array(copy);
}

std::vector<std::int32_t> bounds_of(std::span<const Value> values) {
  std::vector<std::int32_t> bounds;
  for (const Value& value : values) bounds.push_back(to_long(value));
  return bounds;
}

}  // namespace

void Machine::let(Value& target, const Value& value) {
  if (value.is_object()) {
    target = plain_value(value);
  } else if (value.is_array()) {
    target = copied(value);
  } else {
    target = value;
  }
}

void Machine::let_move(Value& target, Value& value) {
  if (value.is_object()) {
    target = plain_value(value);
    value = Value();
  } else {
    target = std::move(value);
  }
}

void Machine::set_object(Value& target, const Value& value) {
  if (!value.is_object()) raise(errors::kObjectRequired);
  target = value;
}

bool Machine::compare(const Value& a, const Value& b, std::uint16_t n, bool& is_null) {
  if (a.is_object()) return compare(plain_value(a), b, n, is_null);
  if (b.is_object()) return compare(a, plain_value(b), n, is_null);
  if ((n & (kLeftLiteral | kRightLiteral)) != 0) {
    const bool mixed = (a.is_text() && is_number(b)) || (is_number(a) && b.is_text());
    if (mixed) return holds(n, literal_order(a, b, n));
  }
  const std::optional<std::strong_ordering> order = compare_loosely(a, b);
  is_null = !order.has_value();
  return order && holds(n, *order);
}

// What a condition says: Null is no.
bool Machine::truth(const Value& value) {
  if (value.kind() == Kind::Boolean) return value.as_boolean();
  if (value.is_null()) return false;
  if (value.is_object()) return truth(plain_value(value));
  return to_boolean(value);
}

void Machine::join(Frame& frame, const Instruction& i) {
  const std::uint32_t* const list = &frame.code->lists[i.c];
  std::string text;
  bool all_null = true;
  bool plain = true;
  for (std::uint32_t k = 1; k <= list[0]; ++k) {
    const Value& part = at(frame, list[k]);
    if (!part.is_null()) all_null = false;
    if (part.is_array() || (part.is_text() && part.as_text().trailing_byte())) plain = false;
    if (plain) append_text(text, part);
  }
  if (all_null) {
    at(frame, i.a) = Value::null();
  } else if (plain) {
    join_halves(text);
    Text whole;
    whole.append(text);
    at(frame, i.a) = Value::text(std::move(whole));
  } else {
    Text whole;
    for (std::uint32_t k = 1; k <= list[0]; ++k) whole.append(joined_text(at(frame, list[k])));
    at(frame, i.a) = Value::text(std::move(whole));
  }
}

void Machine::append_held(Value& target, Value& held, const Value& more) {
  const Text tail = joined_text(more);  // first: it may run script that changes the target
  const bool unchanged = target.is_text() && held.is_text() &&
                         target.as_text().identity() == held.as_text().identity();
  if (!unchanged) {
    target =
        more.is_null() && held.is_null() ? Value::null() : concatenate(held, Value::text(tail));
    held = Value();
    return;
  }
  held = Value();
  target.append(tail);
}

// --- loops ------------------------------------------------------------------------------------

namespace {

Value loop_number(const Value& value) {
  if (value.is_null()) raise(errors::kInvalidNull);
  const Value number = value.kind() == Kind::Date ? value : to_number(value);
  return value.kind() == Kind::Byte ? value : number;
}

bool goes_on(const Value& variable, const Value& limit, const Value& step) {
  const auto order = compare_loosely(variable, limit);
  if (!order) raise(errors::kInvalidNull);
  return to_double(step) >= 0 ? std::is_lteq(*order) : std::is_gteq(*order);
}

}  // namespace

bool Machine::for_start(Frame& frame, const Instruction& i) {
  const std::uint32_t* const list = &frame.code->lists[i.c] + 1;
  const Value from = loop_number(at(frame, list[1]));
  const Value to = loop_number(at(frame, list[2]));
  const Value step = loop_number(at(frame, list[3]));
  Value* const hidden = &at(frame, list[4]);
  at(frame, list[0]) = from;
  hidden[0] = to;
  hidden[1] = step;
  return goes_on(from, to, step);
}

bool Machine::for_next(Value& variable, Value* hidden) {
  // OPTIMIZATION: whole numbers that count up.
  const bool integers = variable.kind() == Kind::Integer && hidden[0].kind() == Kind::Integer &&
                        hidden[1].kind() == Kind::Integer;
  if (integers) {
    const int next = variable.as_integer() + hidden[1].as_integer();
    if (next == static_cast<std::int16_t>(next)) {
      variable = Value::integer(static_cast<std::int16_t>(next));
      return hidden[1].as_integer() >= 0 ? next <= hidden[0].as_integer()
                                         : next >= hidden[0].as_integer();
    }
  } else if (variable.kind() == Kind::Long && hidden[0].kind() == Kind::Long &&
             hidden[1].kind() == Kind::Integer) {
    std::int32_t next = 0;
    if (!__builtin_add_overflow(variable.as_long(), hidden[1].as_integer(), &next)) {
      variable = Value::long_integer(next);
      return hidden[1].as_integer() >= 0 ? next <= hidden[0].as_long()
                                         : next >= hidden[0].as_long();
    }
  }
  if (hidden[1].is_empty()) raise(errors::kForLoopNotInitialized);
  variable = add(loop_number(variable), hidden[1]);
  return goes_on(variable, hidden[0], hidden[1]);
}

void Machine::each_start(Value& hidden, const Value& collection) {
  if (collection.is_array()) {
    hidden = Value::object(make_ref<Walk>(collection));
    return;
  }
  if (!collection.is_object()) raise(errors::kNotACollection);
  if (collection.as_object() == nullptr) raise(errors::kObjectNotSet);
  hidden = Value::object(make_ref<Walk>(collection.as_object()->enumerate()));
}

bool Machine::each_next(Value& variable, Value& hidden) {
  if (!hidden.is_object()) raise(errors::kForLoopNotInitialized);
  Value item;
  if (!static_cast<Walk*>(hidden.as_object())->next(item)) {
    variable = Value();  // a walk that came to its end leaves nothing in its variable
    return false;
  }
  variable = std::move(item);
  return true;
}

// --- arrays -----------------------------------------------------------------------------------

void Machine::dimension(Frame& frame, const Instruction& i) {
  const std::uint32_t* const list = &frame.code->lists[i.c];
  std::vector<std::int32_t> bounds;
  for (std::uint32_t k = 1; k <= list[0]; ++k) bounds.push_back(static_cast<std::int32_t>(list[k]));
  at(frame, i.a) = Value::array(Array::make(bounds, i.n != 0));
}

void Machine::redim(Frame& frame, const Instruction& i) {
  const std::uint32_t* const list = &frame.code->lists[i.c];
  std::vector<Value> values;
  for (std::uint32_t k = 1; k <= list[0]; ++k) values.push_back(at(frame, list[k]));
  const std::vector<std::int32_t> bounds = bounds_of(values);
  Value& variable = at(frame, i.a);
  const bool is_array = variable.is_array();
  if (is_array && variable.as_array().fixed()) raise(errors::kArrayFixed);
  if (!is_array && !variable.is_empty() && i.n != 0) raise(errors::kTypeMismatch);
  const bool keeps = i.n != 0 && is_array && variable.as_array().dimensions() > 0;
  if (!keeps) {
    variable = Value::array(Array::make(bounds));
    return;
  }
  const Array& old = variable.as_array();
  bool same = old.dimensions() == bounds.size();
  for (std::size_t k = 0; same && k + 1 < bounds.size(); ++k) {
    same = old.upper_bound(k) == bounds[k];
  }
  if (!same) raise(errors::kSubscriptOutOfRange);
  variable.writable_array().resize_last(bounds.back());
}

void Machine::erase(Value& variable) {
  if (!variable.is_array()) raise(errors::kTypeMismatch);
  if (!variable.as_array().fixed()) {
    variable = Value::array(Array::make({}));
    return;
  }
  const std::span<Value> elements = variable.writable_array().elements();
  // Emptied at once: the end of an element may run script that looks at the others.
  const std::vector<Value> gone(std::make_move_iterator(elements.begin()),
                                std::make_move_iterator(elements.end()));
}

}  // namespace rk::vbscript
