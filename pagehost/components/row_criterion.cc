#include "pagehost/components/row_criterion.h"

#include <array>
#include <cstddef>
#include <utility>

#include "pagehost/components/file_paths.h"
#include "value/conversions.h"
#include "value/dates.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

// 'text' with doubled quotes, #date#, a number or Null.
Value literal(std::string_view text) {
  if (text.size() >= 2 && text.front() == text.back() && (text[0] == '\'' || text[0] == '#')) {
    const char mark = text[0];
    std::string inner;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
      inner += text[i];
      if (text[i] == mark && text[i + 1] == mark && i + 2 < text.size()) ++i;
    }
    if (mark == '\'') return Value::text(inner);
    const auto date = parse_date(inner);
    if (!date) raise(errors::kInvalidArgument);
    return Value::date(*date);
  }
  if (equal_ignoring_case(text, "null")) return Value::null();
  if (equal_ignoring_case(text, "true")) return Value::boolean(true);
  if (equal_ignoring_case(text, "false")) return Value::boolean(false);
  const auto number = parse_number(text);
  if (!number) raise(errors::kInvalidArgument);
  return Value::real(*number);
}

// Below 0, 0 or above 0; letter case of texts does not count, as in the database.
int compared(const Value& field, const Value& value) {
  if (value.is_text()) {
    const std::string a = lowered_ascii(joined_text(field).view());
    const std::string b = lowered_ascii(value.as_view());
    return a.compare(b);
  }
  const double a = to_double(field);
  const double b = to_double(value);
  return a < b ? -1 : a > b ? 1 : 0;
}

}  // namespace

RowCriterion::RowCriterion(std::string_view text) {
  text = trimmed(text);
  const bool bracketed = text.starts_with('[');
  const std::size_t end = bracketed ? text.find(']') : text.find_first_of(" \t=<>");
  if (end == std::string_view::npos) raise(errors::kInvalidArgument);
  column_ = bracketed ? text.substr(1, end - 1) : text.substr(0, end);
  std::string_view rest = trimmed(text.substr(end + (bracketed ? 1 : 0)));
  static constexpr std::array<std::pair<std::string_view, Test>, 7> kTests{{
      {"<>", Test::Differs},
      {"<=", Test::NotAbove},
      {">=", Test::NotBelow},
      {"=", Test::Equal},
      {"<", Test::Below},
      {">", Test::Above},
      {"like", Test::Like},
  }};
  for (const auto& [mark, test] : kTests) {
    if (!equal_ignoring_case(rest.substr(0, mark.size()), mark)) continue;
    test_ = test;
    value_ = literal(trimmed(rest.substr(mark.size())));
    return;
  }
  raise(errors::kInvalidArgument);
}

bool RowCriterion::holds(platform::Recordset& rows) const {
  const Value field = rows.field(rows.ordinal(column_));
  if (field.is_null() || value_.is_null()) {
    return test_ == Test::Equal ? field.is_null() && value_.is_null()
                                : test_ == Test::Differs && field.is_null() != value_.is_null();
  }
  if (test_ == Test::Like) {
    std::string pattern = joined_text(value_).string();
    for (char& c : pattern) {
      if (c == '%') c = '*';
    }
    return matches_wildcard(joined_text(field).view(), pattern);
  }
  const int order = compared(field, value_);
  switch (test_) {
    case Test::Equal:
      return order == 0;
    case Test::Differs:
      return order != 0;
    case Test::Below:
      return order < 0;
    case Test::NotAbove:
      return order <= 0;
    case Test::Above:
      return order > 0;
    default:
      return order >= 0;
  }
}

}  // namespace rk::pagehost
