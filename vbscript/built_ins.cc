#include "vbscript/built_ins.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

#include "value/text.h"
#include "vbscript/built_in_functions.h"

namespace rk::vbscript {

namespace {

// In the order of their names without letter case.
constexpr BuiltIn kBuiltIns[] = {
    {"Abs", 1, 1, functions::absolute},
    {"Array", 0, kAnyArguments, functions::array},
    {"Asc", 1, 1, functions::asc},
    {"AscB", 1, 1, functions::asc_b},
    {"AscW", 1, 1, functions::asc_w},
    {"Atn", 1, 1, functions::arc_tangent},
    {"CBool", 1, 1, functions::c_bool},
    {"CByte", 1, 1, functions::c_byte},
    {"CCur", 1, 1, functions::c_cur},
    {"CDate", 1, 1, functions::c_date},
    {"CDbl", 1, 1, functions::c_dbl},
    {"Chr", 1, 1, functions::chr},
    {"ChrB", 1, 1, functions::chr_b},
    {"ChrW", 1, 1, functions::chr_w},
    {"CInt", 1, 1, functions::c_int},
    {"CLng", 1, 1, functions::c_lng},
    {"Cos", 1, 1, functions::cosine},
    {"CreateObject", 1, 2, functions::create_object},
    {"CSng", 1, 1, functions::c_sng},
    {"CStr", 1, 1, functions::c_str},
    {"Date", 0, 0, functions::date},
    {"DateAdd", 3, 3, functions::date_add},
    {"DateDiff", 3, 5, functions::date_diff},
    {"DatePart", 2, 4, functions::date_part},
    {"DateSerial", 3, 3, functions::date_serial},
    {"DateValue", 1, 1, functions::date_value},
    {"Day", 1, 1, functions::day},
    {"Err", 0, 0, functions::err},
    {"Escape", 1, 1, functions::escape},
    {"Eval", 1, 1, functions::eval},
    {"Execute", 1, 1, functions::execute},
    {"ExecuteGlobal", 1, 1, functions::execute_global},
    {"Exp", 1, 1, functions::exponential},
    {"Filter", 2, 4, functions::filter},
    {"Fix", 1, 1, functions::fix},
    {"FormatCurrency", 1, 5, functions::format_currency},
    {"FormatDateTime", 1, 2, functions::format_date_time},
    {"FormatNumber", 1, 5, functions::format_number},
    {"FormatPercent", 1, 5, functions::format_percent},
    {"GetLocale", 0, 0, functions::get_locale},
    {"GetObject", 0, 2, functions::get_object},
    {"GetRef", 1, 1, functions::get_ref},
    {"Hex", 1, 1, functions::hex},
    {"Hour", 1, 1, functions::hour},
    {"InputBox", 1, 7, functions::no_desktop},
    {"InStr", 2, 4, functions::in_str},
    {"InStrB", 2, 4, functions::in_str_b},
    {"InStrRev", 2, 4, functions::in_str_rev},
    {"Int", 1, 1, functions::whole},
    {"IsArray", 1, 1, functions::is_array},
    {"IsDate", 1, 1, functions::is_date},
    {"IsEmpty", 1, 1, functions::is_empty},
    {"IsNull", 1, 1, functions::is_null},
    {"IsNumeric", 1, 1, functions::is_numeric},
    {"IsObject", 1, 1, functions::is_object},
    {"Join", 1, 2, functions::join},
    {"LBound", 1, 2, functions::lower_bound},
    {"LCase", 1, 1, functions::lower},
    {"Left", 2, 2, functions::left},
    {"LeftB", 2, 2, functions::left_b},
    {"Len", 1, 1, functions::length},
    {"LenB", 1, 1, functions::length_b},
    {"LoadPicture", 1, 1, functions::no_desktop},
    {"Log", 1, 1, functions::logarithm},
    {"LTrim", 1, 1, functions::trim_left},
    {"Mid", 2, 3, functions::mid},
    {"MidB", 2, 3, functions::mid_b},
    {"Minute", 1, 1, functions::minute},
    {"Month", 1, 1, functions::month},
    {"MonthName", 1, 2, functions::month_name},
    {"MsgBox", 1, 5, functions::no_desktop},
    {"Now", 0, 0, functions::now},
    {"Oct", 1, 1, functions::octal},
    {"Randomize", 0, 1, functions::randomize},
    {"Replace", 3, 6, functions::replace},
    {"RGB", 3, 3, functions::rgb},
    {"Right", 2, 2, functions::right},
    {"RightB", 2, 2, functions::right_b},
    {"Rnd", 0, 1, functions::random},
    {"Round", 1, 2, functions::round},
    {"RTrim", 1, 1, functions::trim_right},
    {"ScriptEngine", 0, 0, functions::script_engine},
    {"ScriptEngineBuildVersion", 0, 0, functions::build_version},
    {"ScriptEngineMajorVersion", 0, 0, functions::major_version},
    {"ScriptEngineMinorVersion", 0, 0, functions::minor_version},
    {"Second", 1, 1, functions::second},
    {"SetLocale", 0, 1, functions::set_locale},
    {"Sgn", 1, 1, functions::sign},
    {"Sin", 1, 1, functions::sine},
    {"Space", 1, 1, functions::space},
    {"Split", 1, 4, functions::split},
    {"Sqr", 1, 1, functions::square_root},
    {"StrComp", 2, 3, functions::str_comp},
    {"String", 2, 2, functions::string},
    {"StrReverse", 1, 1, functions::str_reverse},
    {"Tan", 1, 1, functions::tangent},
    {"Time", 0, 0, functions::time},
    {"Timer", 0, 0, functions::timer},
    {"TimeSerial", 3, 3, functions::time_serial},
    {"TimeValue", 1, 1, functions::time_value},
    {"Trim", 1, 1, functions::trim},
    {"TypeName", 1, 1, functions::type_name},
    {"UBound", 1, 2, functions::upper_bound},
    {"UCase", 1, 1, functions::upper},
    {"Unescape", 1, 1, functions::unescape},
    {"VarType", 1, 1, functions::var_type},
    {"Weekday", 1, 2, functions::weekday},
    {"WeekdayName", 1, 3, functions::weekday_name},
    {"Year", 1, 1, functions::year},
};

bool below(std::string_view a, std::string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return ascii_lower(x) < ascii_lower(y);
  });
}

struct NumberConstant {
  std::string_view name;
  std::int32_t value;
};

constexpr NumberConstant kNumbers[] = {
    {"vbBlack", 0x00},
    {"vbRed", 0xFF},
    {"vbGreen", 0xFF00},
    {"vbYellow", 0xFFFF},
    {"vbBlue", 0xFF0000},
    {"vbMagenta", 0xFF00FF},
    {"vbCyan", 0xFFFF00},
    {"vbWhite", 0xFFFFFF},
    {"vbBinaryCompare", 0},
    {"vbTextCompare", 1},
    {"vbSunday", 1},
    {"vbMonday", 2},
    {"vbTuesday", 3},
    {"vbWednesday", 4},
    {"vbThursday", 5},
    {"vbFriday", 6},
    {"vbSaturday", 7},
    {"vbUseSystem", 0},
    {"vbUseSystemDayOfWeek", 0},
    {"vbFirstJan1", 1},
    {"vbFirstFourDays", 2},
    {"vbFirstFullWeek", 3},
    {"vbGeneralDate", 0},
    {"vbLongDate", 1},
    {"vbShortDate", 2},
    {"vbLongTime", 3},
    {"vbShortTime", 4},
    {"vbObjectError", -2147221504},
    {"vbOKOnly", 0},
    {"vbOKCancel", 1},
    {"vbAbortRetryIgnore", 2},
    {"vbYesNoCancel", 3},
    {"vbYesNo", 4},
    {"vbRetryCancel", 5},
    {"vbCritical", 16},
    {"vbQuestion", 32},
    {"vbExclamation", 48},
    {"vbInformation", 64},
    {"vbDefaultButton1", 0},
    {"vbDefaultButton2", 256},
    {"vbDefaultButton3", 512},
    {"vbDefaultButton4", 768},
    {"vbApplicationModal", 0},
    {"vbSystemModal", 4096},
    {"vbOK", 1},
    {"vbCancel", 2},
    {"vbAbort", 3},
    {"vbRetry", 4},
    {"vbIgnore", 5},
    {"vbYes", 6},
    {"vbNo", 7},
    {"vbUseDefault", -2},
    {"vbTrue", -1},
    {"vbFalse", 0},
    {"vbEmpty", 0},
    {"vbNull", 1},
    {"vbInteger", 2},
    {"vbLong", 3},
    {"vbSingle", 4},
    {"vbDouble", 5},
    {"vbCurrency", 6},
    {"vbDate", 7},
    {"vbString", 8},
    {"vbObject", 9},
    {"vbError", 10},
    {"vbBoolean", 11},
    {"vbVariant", 12},
    {"vbDataObject", 13},
    {"vbDecimal", 14},
    {"vbByte", 17},
    {"vbArray", 8192},
};

struct TextConstant {
  std::string_view name;
  std::string_view value;
};

constexpr TextConstant kTexts[] = {
    {"vbCr", "\r"},  {"vbCrLf", "\r\n"},      {"vbFormFeed", "\f"},
    {"vbLf", "\n"},  {"vbNewLine", "\r\n"},   {"vbNullChar", std::string_view("\0", 1)},
    {"vbTab", "\t"}, {"vbVerticalTab", "\v"}, {"vbNullString", ""},
};

std::unordered_map<std::string, Value> constants() {
  std::unordered_map<std::string, Value> all;
  for (const NumberConstant& c : kNumbers) {
    const bool narrow = c.value >= -32768 && c.value <= 32767;
    all[lowered_ascii(c.name)] =
        narrow ? Value::integer(static_cast<std::int16_t>(c.value)) : Value::long_integer(c.value);
  }
  for (const TextConstant& c : kTexts) all[lowered_ascii(c.name)] = Value::text(c.value);
  for (const auto& [name, value] : all) value.share();
  return all;
}

}  // namespace

int find_built_in(std::string_view folded) {
  const auto* at =
      std::lower_bound(std::begin(kBuiltIns), std::end(kBuiltIns), folded,
                       [](const BuiltIn& b, std::string_view name) { return below(b.name, name); });
  if (at == std::end(kBuiltIns) || !equal_ignoring_case(at->name, folded)) return kNoBuiltIn;
  return static_cast<int>(at - std::begin(kBuiltIns));
}

const BuiltIn& built_in(int index) {
  return kBuiltIns[index];
}

const Value* find_built_in_constant(std::string_view folded) {
  static const std::unordered_map<std::string, Value> kAll = constants();
  const auto at = kAll.find(std::string(folded));
  return at == kAll.end() ? nullptr : &at->second;
}

}  // namespace rk::vbscript
