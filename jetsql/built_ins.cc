#include "jetsql/built_ins.h"

#include <iterator>

namespace rk::jetsql {

namespace {

using Form = BuiltIn::Form;

constexpr int kAnyNumber = 1000;

constexpr BuiltIn kBuiltIns[] = {
    {"abs", 1, 1, Type::Unknown, Form::Plain, "jet_abs"},
    {"asc", 1, 1, Type::Integer, Form::Plain, "jet_asc"},
    {"ascw", 1, 1, Type::Integer, Form::Plain, "jet_asc"},
    {"atn", 1, 1, Type::Double, Form::Plain, "jet_atn"},
    {"avg", 1, 1, Type::Double, Form::Aggregate, "avg"},
    {"cbool", 1, 1, Type::Boolean, Form::Plain, "jet_flag"},
    {"cbyte", 1, 1, Type::Integer, Form::Plain, "jet_byte"},
    {"ccur", 1, 1, Type::Currency, Form::Plain, "jet_currency"},
    {"cdate", 1, 1, Type::Date, Form::Plain, "jet_date"},
    {"cdbl", 1, 1, Type::Double, Form::Plain, "jet_double"},
    {"choose", 2, kAnyNumber, Type::Unknown, Form::Choose, ""},
    {"chr", 1, 1, Type::Text, Form::Plain, "jet_chr"},
    {"chrw", 1, 1, Type::Text, Form::Plain, "jet_chr"},
    {"cint", 1, 1, Type::Integer, Form::Plain, "jet_short"},
    {"clng", 1, 1, Type::Integer, Form::Plain, "jet_long"},
    {"cos", 1, 1, Type::Double, Form::Plain, "jet_cos"},
    {"count", 1, 1, Type::Integer, Form::Count, "count"},
    {"csng", 1, 1, Type::Double, Form::Plain, "jet_double"},
    {"cstr", 1, 1, Type::Text, Form::Plain, "jet_text"},
    {"cvdate", 1, 1, Type::Date, Form::Plain, "jet_date"},
    {"date", 0, 0, Type::Date, Form::Today, ""},
    {"dateadd", 3, 3, Type::Date, Form::Plain, "jet_dateadd"},
    {"datediff", 3, 5, Type::Integer, Form::Plain, "jet_datediff"},
    {"datepart", 2, 4, Type::Integer, Form::Plain, "jet_datepart"},
    {"dateserial", 3, 3, Type::Date, Form::Plain, "jet_dateserial"},
    {"datevalue", 1, 1, Type::Date, Form::Plain, "jet_datevalue"},
    {"day", 1, 1, Type::Integer, Form::Plain, "jet_day"},
    {"exp", 1, 1, Type::Double, Form::Plain, "jet_exp"},
    {"first", 1, 1, Type::Unknown, Form::First, "jet_first"},
    {"fix", 1, 1, Type::Unknown, Form::Plain, "jet_fix"},
    {"format", 1, 4, Type::Text, Form::Plain, "jet_format"},
    {"hex", 1, 1, Type::Text, Form::Plain, "jet_hex"},
    {"hour", 1, 1, Type::Integer, Form::Plain, "jet_hour"},
    {"iif", 3, 3, Type::Unknown, Form::IIf, ""},
    {"instr", 2, 4, Type::Integer, Form::Plain, "jet_instr"},
    {"instrrev", 2, 4, Type::Integer, Form::Plain, "jet_instrrev"},
    {"int", 1, 1, Type::Unknown, Form::Plain, "jet_int"},
    {"isdate", 1, 1, Type::Boolean, Form::Plain, "jet_isdate"},
    {"isnull", 1, 1, Type::Boolean, Form::IsNull, ""},
    {"isnumeric", 1, 1, Type::Boolean, Form::Plain, "jet_isnumeric"},
    {"last", 1, 1, Type::Unknown, Form::Last, "jet_last"},
    {"lcase", 1, 1, Type::Text, Form::Plain, "jet_lcase"},
    {"left", 2, 2, Type::Text, Form::Plain, "jet_left"},
    {"len", 1, 1, Type::Integer, Form::Plain, "jet_len"},
    {"log", 1, 1, Type::Double, Form::Plain, "jet_log"},
    {"ltrim", 1, 1, Type::Text, Form::Plain, "jet_ltrim"},
    {"max", 1, 1, Type::Unknown, Form::Aggregate, "max"},
    {"mid", 2, 3, Type::Text, Form::Plain, "jet_mid"},
    {"min", 1, 1, Type::Unknown, Form::Aggregate, "min"},
    {"minute", 1, 1, Type::Integer, Form::Plain, "jet_minute"},
    {"month", 1, 1, Type::Integer, Form::Plain, "jet_month"},
    {"monthname", 1, 2, Type::Text, Form::Plain, "jet_monthname"},
    {"now", 0, 0, Type::Date, Form::Now, ""},
    {"nz", 1, 2, Type::Unknown, Form::Nz, ""},
    {"oct", 1, 1, Type::Text, Form::Plain, "jet_oct"},
    {"replace", 3, 6, Type::Text, Form::Plain, "jet_replace"},
    {"right", 2, 2, Type::Text, Form::Plain, "jet_right"},
    {"rnd", 0, 1, Type::Double, Form::Rnd, "jet_rnd"},
    {"round", 1, 2, Type::Unknown, Form::Plain, "jet_round"},
    {"rtrim", 1, 1, Type::Text, Form::Plain, "jet_rtrim"},
    {"second", 1, 1, Type::Integer, Form::Plain, "jet_second"},
    {"sgn", 1, 1, Type::Integer, Form::Plain, "jet_sgn"},
    {"sin", 1, 1, Type::Double, Form::Plain, "jet_sin"},
    {"space", 1, 1, Type::Text, Form::Plain, "jet_space"},
    {"sqr", 1, 1, Type::Double, Form::Plain, "jet_sqr"},
    {"stdev", 1, 1, Type::Double, Form::Aggregate, "jet_stdev"},
    {"stdevp", 1, 1, Type::Double, Form::Aggregate, "jet_stdevp"},
    {"str", 1, 1, Type::Text, Form::Plain, "jet_str"},
    {"strcomp", 2, 3, Type::Integer, Form::Plain, "jet_strcomp"},
    {"string", 2, 2, Type::Text, Form::Plain, "jet_string"},
    {"strreverse", 1, 1, Type::Text, Form::Plain, "jet_strreverse"},
    {"sum", 1, 1, Type::Unknown, Form::Aggregate, "sum"},
    {"switch", 2, kAnyNumber, Type::Unknown, Form::Switch, ""},
    {"tan", 1, 1, Type::Double, Form::Plain, "jet_tan"},
    {"time", 0, 0, Type::Date, Form::Clock, ""},
    {"timeserial", 3, 3, Type::Date, Form::Plain, "jet_timeserial"},
    {"timevalue", 1, 1, Type::Date, Form::Plain, "jet_timevalue"},
    {"trim", 1, 1, Type::Text, Form::Plain, "jet_trim"},
    {"ucase", 1, 1, Type::Text, Form::Plain, "jet_ucase"},
    {"val", 1, 1, Type::Double, Form::Plain, "jet_val"},
    {"var", 1, 1, Type::Double, Form::Aggregate, "jet_var"},
    {"varp", 1, 1, Type::Double, Form::Aggregate, "jet_varp"},
    {"weekday", 1, 2, Type::Integer, Form::Plain, "jet_weekday"},
    {"weekdayname", 1, 3, Type::Text, Form::Plain, "jet_weekdayname"},
    {"year", 1, 1, Type::Integer, Form::Plain, "jet_year"},
};

}  // namespace

const BuiltIn* built_in(std::string_view name) {
  std::size_t low = 0;
  std::size_t high = std::size(kBuiltIns);
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    const int order = kBuiltIns[middle].name.compare(name);
    if (order == 0) return &kBuiltIns[middle];
    if (order < 0) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return nullptr;
}

}  // namespace rk::jetsql
