// Built-in functions about kinds of values, conversions, arrays, objects and the script itself.

#include <limits>

#include "value/array.h"
#include "value/dates.h"
#include "value/text.h"
#include "vbscript/built_in_functions.h"
#include "vbscript/machine.h"
#include "vbscript/names.h"
#include "vbscript/regexp_object.h"

namespace rk::vbscript::functions {

// --- kinds ------------------------------------------------------------------------------------

Value type_name(Machine&, Arguments arguments) {
  const Value& value = *arguments[0];
  switch (value.kind()) {
    case Value::Kind::Empty:
      return Value::text("Empty");
    case Value::Kind::Null:
      return Value::text("Null");
    case Value::Kind::Boolean:
      return Value::text("Boolean");
    case Value::Kind::Byte:
      return Value::text("Byte");
    case Value::Kind::Integer:
      return Value::text("Integer");
    case Value::Kind::Long:
      return Value::text("Long");
    case Value::Kind::Single:
      return Value::text("Single");
    case Value::Kind::Double:
      return Value::text("Double");
    case Value::Kind::Currency:
      return Value::text("Currency");
    case Value::Kind::Date:
      return Value::text("Date");
    case Value::Kind::String:
      return Value::text("String");
    case Value::Kind::Error:
      return Value::text("Error");
    case Value::Kind::Array:
      return Value::text(value.as_array().holds_bytes() ? "Byte()" : "Variant()");
    case Value::Kind::Object:
      if (value.as_object() == nullptr) return Value::text("Nothing");
      return Value::text(value.as_object()->type_name());
  }
  return Value();
}

// Of an object with a default member, such as a field: the type of its value.
Value var_type(Machine& machine, Arguments arguments) {
  constexpr std::int16_t kArray = 8192;
  constexpr std::int16_t kVariant = 12;
  constexpr std::int16_t kByte = 17;
  const Value value = machine.plain_or_none(*arguments[0]).value_or(*arguments[0]);
  switch (value.kind()) {
    case Value::Kind::Empty:
      return Value::integer(0);
    case Value::Kind::Null:
      return Value::integer(1);
    case Value::Kind::Integer:
      return Value::integer(2);
    case Value::Kind::Long:
      return Value::integer(3);
    case Value::Kind::Single:
      return Value::integer(4);
    case Value::Kind::Double:
      return Value::integer(5);
    case Value::Kind::Currency:
      return Value::integer(6);
    case Value::Kind::Date:
      return Value::integer(7);
    case Value::Kind::String:
      return Value::integer(8);
    case Value::Kind::Object:
      return Value::integer(9);
    case Value::Kind::Error:
      return Value::integer(10);
    case Value::Kind::Boolean:
      return Value::integer(11);
    case Value::Kind::Byte:
      return Value::integer(kByte);
    case Value::Kind::Array:
      return Value::integer(kArray + (value.as_array().holds_bytes() ? kByte : kVariant));
  }
  return Value();
}

Value is_array(Machine&, Arguments arguments) {
  return Value::boolean(arguments[0]->is_array());
}
// Of an object its value counts: a form's field that was not sent is empty.
Value is_empty(Machine& machine, Arguments arguments) {
  if (!arguments[0]->is_object()) return Value::boolean(arguments[0]->is_empty());
  const std::optional<Value> value = machine.plain_or_none(*arguments[0]);
  return Value::boolean(value && value->is_empty());
}
Value is_object(Machine&, Arguments arguments) {
  return Value::boolean(arguments[0]->is_object());
}

Value is_null(Machine& machine, Arguments arguments) {
  const std::optional<Value> value = machine.plain_or_none(*arguments[0]);
  return Value::boolean(value && value->is_null());
}

Value is_numeric(Machine& machine, Arguments arguments) {
  const std::optional<Value> value = machine.plain_or_none(*arguments[0]);
  return Value::boolean(value && rk::is_numeric(*value));
}

Value is_date(Machine& machine, Arguments arguments) {
  const std::optional<Value> value = machine.plain_or_none(*arguments[0]);
  if (!value) return Value::boolean(false);
  if (value->kind() == Value::Kind::Date) return Value::boolean(true);
  return Value::boolean(value->is_text() && parse_date(value->as_view()).has_value());
}

// --- conversions ------------------------------------------------------------------------------

Value c_bool(Machine&, Arguments arguments) {
  return Value::boolean(to_boolean(*arguments[0]));
}
// All bits of a Byte are set in True.
Value c_byte(Machine&, Arguments arguments) {
  if (arguments[0]->kind() == Value::Kind::Boolean) {
    return Value::byte(arguments[0]->as_boolean() ? std::numeric_limits<std::uint8_t>::max() : 0);
  }
  return Value::byte(to_byte(*arguments[0]));
}
Value c_int(Machine&, Arguments arguments) {
  return Value::integer(to_integer(*arguments[0]));
}
Value c_lng(Machine&, Arguments arguments) {
  return Value::long_integer(to_long(*arguments[0]));
}
Value c_sng(Machine&, Arguments arguments) {
  return Value::single(to_single(*arguments[0]));
}
Value c_dbl(Machine&, Arguments arguments) {
  return Value::real(to_double(*arguments[0]));
}
Value c_cur(Machine&, Arguments arguments) {
  return Value::currency(to_currency(*arguments[0]));
}
Value c_date(Machine&, Arguments arguments) {
  return Value::date(to_date(*arguments[0]));
}
Value c_str(Machine&, Arguments arguments) {
  return Value::text(to_text(*arguments[0]));
}

// --- arrays -----------------------------------------------------------------------------------

Value array(Machine&, Arguments arguments) {
  std::vector<Value> elements;
  elements.reserve(arguments.size());
  for (const Value* value : arguments) elements.push_back(*value);
  return Value::array(Array::of(std::move(elements)));
}

namespace {

std::size_t dimension_of(Arguments arguments) {
  // Before the array is looked at: reading it may run script that changes the variable.
  const std::int32_t dimension = long_or(arguments, 1, 1);
  const Value& value = *arguments[0];
  if (!value.is_array()) raise(errors::kTypeMismatch);
  if (dimension < 1 || static_cast<std::size_t>(dimension) > value.as_array().dimensions()) {
    raise(errors::kSubscriptOutOfRange);
  }
  return static_cast<std::size_t>(dimension) - 1;
}

}  // namespace

Value lower_bound(Machine&, Arguments arguments) {
  dimension_of(arguments);
  return Value::long_integer(0);
}

Value upper_bound(Machine&, Arguments arguments) {
  const std::size_t dimension = dimension_of(arguments);
  return Value::long_integer(arguments[0]->as_array().upper_bound(dimension));
}

// --- the script and what is around it ----------------------------------------------------------

Value err(Machine& machine, Arguments) {
  return Value::object(Ref<Object>(&machine.err()));
}

Value execute(Machine& machine, Arguments arguments) {
  machine.execute(to_text(*arguments[0]).view(), false);
  return Value();
}

Value execute_global(Machine& machine, Arguments arguments) {
  machine.execute(to_text(*arguments[0]).view(), true);
  return Value();
}

Value eval(Machine& machine, Arguments arguments) {
  const Value value = plain(*arguments[0]);
  if (!value.is_text()) return value;
  return machine.evaluate(value.as_view());
}

Value get_ref(Machine& machine, Arguments arguments) {
  return machine.procedure_object(to_text(*arguments[0]).view());
}

Value create_object(Machine& machine, Arguments arguments) {
  const Text name = to_text(*arguments[0]);
  if (equal_ignoring_case(name.view(), "VBScript.RegExp")) {
    return regexp_object(machine.services());
  }
  return machine.host().create_object(name.view());
}

Value get_object(Machine&, Arguments) {
  raise(errors::kCannotCreateObject);
}

// There is nobody to look at a box: as on any server, it may not be shown.
Value no_desktop(Machine&, Arguments) {
  raise(errors::kPermissionDenied);
}

Value script_engine(Machine&, Arguments) {
  return Value::text("VBScript");
}
Value major_version(Machine&, Arguments) {
  return Value::long_integer(5);
}
Value minor_version(Machine&, Arguments) {
  return Value::long_integer(8);
}
Value build_version(Machine&, Arguments) {
  return Value::long_integer(16384);
}

Value get_locale(Machine& machine, Arguments) {
  return Value::long_integer(machine.locale());
}

namespace {

struct Locale {
  std::string_view name;
  std::int32_t number;
};

constexpr Locale kLocales[] = {
    {"zh-cn", 2052}, {"zh-tw", 1028}, {"zh-hk", 3076}, {"en-us", 1033}, {"en-gb", 2057},
    {"de-de", 1031}, {"de", 1031},    {"fr-fr", 1036}, {"fr", 1036},    {"ja-jp", 1041},
    {"ja", 1041},    {"ko-kr", 1042}, {"ko", 1042},    {"en", 1033},    {"zh", 2052},
    {"es-es", 3082}, {"it-it", 1040}, {"ru-ru", 1049}, {"ru", 1049},    {"pt-br", 1046},
};

std::int32_t locale_number(const Value& value, std::int32_t otherwise) {
  if (value.is_text() && !parse_number(value.as_view())) {
    for (const Locale& locale : kLocales) {
      if (equal_ignoring_case(value.as_view(), locale.name)) return locale.number;
    }
    raise(KnownError{447, "Object doesn't support current locale setting"});
  }
  const std::int32_t number = to_long(value);
  if (number < 0) raise(errors::kInvalidCall);
  return number == 0 ? otherwise : number;
}

}  // namespace

Value set_locale(Machine& machine, Arguments arguments) {
  const std::int32_t before = machine.locale();
  if (given(arguments, 0)) machine.set_locale(locale_number(plain(*arguments[0]), before));
  return Value::long_integer(before);
}

}  // namespace rk::vbscript::functions
