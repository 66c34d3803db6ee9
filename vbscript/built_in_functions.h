// The functions behind the table of built-ins, by subject; see built_ins.cc for their names.
#ifndef RK_VBSCRIPT_BUILT_IN_FUNCTIONS_H_
#define RK_VBSCRIPT_BUILT_IN_FUNCTIONS_H_

#include <optional>

#include "value/conversions.h"
#include "value/object.h"
#include "value/script_error.h"
#include "value/text_functions.h"
#include "value/value.h"

namespace rk::vbscript {

class Machine;

namespace functions {

Value absolute(Machine& machine, Arguments arguments);
Value arc_tangent(Machine& machine, Arguments arguments);
Value array(Machine& machine, Arguments arguments);
Value asc(Machine& machine, Arguments arguments);
Value asc_b(Machine& machine, Arguments arguments);
Value asc_w(Machine& machine, Arguments arguments);
Value build_version(Machine& machine, Arguments arguments);
Value c_bool(Machine& machine, Arguments arguments);
Value c_byte(Machine& machine, Arguments arguments);
Value c_cur(Machine& machine, Arguments arguments);
Value c_date(Machine& machine, Arguments arguments);
Value c_dbl(Machine& machine, Arguments arguments);
Value c_int(Machine& machine, Arguments arguments);
Value c_lng(Machine& machine, Arguments arguments);
Value c_sng(Machine& machine, Arguments arguments);
Value c_str(Machine& machine, Arguments arguments);
Value chr(Machine& machine, Arguments arguments);
Value chr_b(Machine& machine, Arguments arguments);
Value chr_w(Machine& machine, Arguments arguments);
Value cosine(Machine& machine, Arguments arguments);
Value create_object(Machine& machine, Arguments arguments);
Value date(Machine& machine, Arguments arguments);
Value date_add(Machine& machine, Arguments arguments);
Value date_diff(Machine& machine, Arguments arguments);
Value date_part(Machine& machine, Arguments arguments);
Value date_serial(Machine& machine, Arguments arguments);
Value date_value(Machine& machine, Arguments arguments);
Value day(Machine& machine, Arguments arguments);
Value err(Machine& machine, Arguments arguments);
Value escape(Machine& machine, Arguments arguments);
Value eval(Machine& machine, Arguments arguments);
Value execute(Machine& machine, Arguments arguments);
Value execute_global(Machine& machine, Arguments arguments);
Value exponential(Machine& machine, Arguments arguments);
Value filter(Machine& machine, Arguments arguments);
Value fix(Machine& machine, Arguments arguments);
Value format_currency(Machine& machine, Arguments arguments);
Value format_date_time(Machine& machine, Arguments arguments);
Value format_number(Machine& machine, Arguments arguments);
Value format_percent(Machine& machine, Arguments arguments);
Value get_locale(Machine& machine, Arguments arguments);
Value get_object(Machine& machine, Arguments arguments);
Value get_ref(Machine& machine, Arguments arguments);
Value hex(Machine& machine, Arguments arguments);
Value hour(Machine& machine, Arguments arguments);
Value in_str(Machine& machine, Arguments arguments);
Value in_str_b(Machine& machine, Arguments arguments);
Value in_str_rev(Machine& machine, Arguments arguments);
Value is_array(Machine& machine, Arguments arguments);
Value is_date(Machine& machine, Arguments arguments);
Value is_empty(Machine& machine, Arguments arguments);
Value is_null(Machine& machine, Arguments arguments);
Value is_numeric(Machine& machine, Arguments arguments);
Value is_object(Machine& machine, Arguments arguments);
Value join(Machine& machine, Arguments arguments);
Value left(Machine& machine, Arguments arguments);
Value left_b(Machine& machine, Arguments arguments);
Value length(Machine& machine, Arguments arguments);
Value length_b(Machine& machine, Arguments arguments);
Value logarithm(Machine& machine, Arguments arguments);
Value lower(Machine& machine, Arguments arguments);
Value lower_bound(Machine& machine, Arguments arguments);
Value major_version(Machine& machine, Arguments arguments);
Value mid(Machine& machine, Arguments arguments);
Value mid_b(Machine& machine, Arguments arguments);
Value minor_version(Machine& machine, Arguments arguments);
Value minute(Machine& machine, Arguments arguments);
Value month(Machine& machine, Arguments arguments);
Value month_name(Machine& machine, Arguments arguments);
Value no_desktop(Machine& machine, Arguments arguments);
Value now(Machine& machine, Arguments arguments);
Value octal(Machine& machine, Arguments arguments);
Value random(Machine& machine, Arguments arguments);
Value randomize(Machine& machine, Arguments arguments);
Value replace(Machine& machine, Arguments arguments);
Value rgb(Machine& machine, Arguments arguments);
Value right(Machine& machine, Arguments arguments);
Value right_b(Machine& machine, Arguments arguments);
Value round(Machine& machine, Arguments arguments);
Value script_engine(Machine& machine, Arguments arguments);
Value second(Machine& machine, Arguments arguments);
Value set_locale(Machine& machine, Arguments arguments);
Value sign(Machine& machine, Arguments arguments);
Value sine(Machine& machine, Arguments arguments);
Value space(Machine& machine, Arguments arguments);
Value split(Machine& machine, Arguments arguments);
Value square_root(Machine& machine, Arguments arguments);
Value str_comp(Machine& machine, Arguments arguments);
Value str_reverse(Machine& machine, Arguments arguments);
Value string(Machine& machine, Arguments arguments);
Value tangent(Machine& machine, Arguments arguments);
Value time(Machine& machine, Arguments arguments);
Value time_serial(Machine& machine, Arguments arguments);
Value time_value(Machine& machine, Arguments arguments);
Value timer(Machine& machine, Arguments arguments);
Value trim(Machine& machine, Arguments arguments);
Value trim_left(Machine& machine, Arguments arguments);
Value trim_right(Machine& machine, Arguments arguments);
Value type_name(Machine& machine, Arguments arguments);
Value unescape(Machine& machine, Arguments arguments);
Value upper(Machine& machine, Arguments arguments);
Value upper_bound(Machine& machine, Arguments arguments);
Value var_type(Machine& machine, Arguments arguments);
Value weekday(Machine& machine, Arguments arguments);
Value weekday_name(Machine& machine, Arguments arguments);
Value whole(Machine& machine, Arguments arguments);
Value year(Machine& machine, Arguments arguments);

// --- what they share

// Whether there is an argument at a place that was not left out.
inline bool given(Arguments arguments, std::size_t i) {
  return arguments.size() > i && !arguments[i]->is_missing();
}
inline std::int32_t long_or(Arguments arguments, std::size_t i, std::int32_t otherwise) {
  return given(arguments, i) ? to_long(*arguments[i]) : otherwise;
}
// vbBinaryCompare or vbTextCompare; raises 5 for anything else.
inline Letters letters_argument(Arguments arguments, std::size_t i) {
  const std::int32_t mode = long_or(arguments, i, 0);
  if (mode != 0 && mode != 1) raise(errors::kInvalidCall);
  return mode == 0 ? Letters::Exact : Letters::AnyCase;
}
// An object's default member, or the value itself.
inline Value plain(const Value& value) {
  return value.is_object() ? plain_value(value) : value;
}

}  // namespace functions
}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_BUILT_IN_FUNCTIONS_H_
