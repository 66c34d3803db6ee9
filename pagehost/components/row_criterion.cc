#include "pagehost/components/row_criterion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
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

namespace {

// Brackets of a page's own filters nest a few deep; the limit keeps a hostile text off the stack.
constexpr int kDeepestFilter = 50;

// Walks a condition outside of quotes, names in brackets and round brackets.
class ConditionWalk {
 public:
  explicit ConditionWalk(std::string_view text) : text_(text) {}

  // The part up to the next `word` or the end; false at the end.
  bool next(std::string_view word, std::string_view& part) {
    if (at_ > text_.size()) return false;
    const std::size_t begin = at_;
    for (; at_ < text_.size(); step()) {
      if (!stands(word)) continue;
      part = trimmed(text_.substr(begin, at_ - begin));
      at_ += word.size();
      return true;
    }
    if (depth_ != 0 || closing_ != 0) raise(errors::kInvalidArgument);
    part = trimmed(text_.substr(begin));
    at_ = text_.size() + 1;
    return true;
  }

 private:
  static bool parts_words(char c) {
    return c == ' ' || c == '\t' || c == '(' || c == ')' || c == '\'' || c == ']' || c == '[' ||
           c == '#';
  }
  bool stands(std::string_view word) const {
    if (closing_ != 0 || depth_ != 0 || at_ == 0) return false;
    const std::size_t end = at_ + word.size();
    return equal_ignoring_case(text_.substr(at_, word.size()), word) &&
           parts_words(text_[at_ - 1]) && end < text_.size() && parts_words(text_[end]);
  }
  void step() {
    const char c = text_[at_++];
    if (closing_ != 0) {
      if (c == closing_) closing_ = 0;
    } else if (c == '\'' || c == '#' || c == '[') {
      closing_ = c == '[' ? ']' : c;
    } else if (c == '(') {
      ++depth_;
    } else if (c == ')' && --depth_ < 0) {
      raise(errors::kInvalidArgument);
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int depth_ = 0;
  char closing_ = 0;
};

std::vector<std::string_view> parts_of(std::string_view text, std::string_view word) {
  std::vector<std::string_view> parts;
  ConditionWalk walk(text);
  for (std::string_view part; walk.next(word, part);) parts.push_back(part);
  return parts;
}

// Null comes first, as the database orders.
int order_of(const Value& a, const Value& b) {
  if (a.is_null() || b.is_null()) return (a.is_null() ? 0 : 1) - (b.is_null() ? 0 : 1);
  return compared(a, b);
}

}  // namespace

RowFilter::RowFilter(std::string_view text) : root_(parsed(trimmed(text), 0)) {}

RowFilter::Node RowFilter::parsed(std::string_view text, int depth) {
  if (depth > kDeepestFilter) raise(errors::kInvalidArgument);
  Node node;
  auto parts = parts_of(text, "or");
  node.all = parts.size() == 1;
  if (node.all) parts = parts_of(text, "and");
  const bool whole = parts.size() == 1;
  for (const std::string_view part : parts) {
    const bool bracketed = part.starts_with('(') && part.ends_with(')');
    if (bracketed) {
      node.parts.push_back(parsed(trimmed(part.substr(1, part.size() - 2)), depth + 1));
    } else if (whole || node.all) {
      node.criteria.emplace_back(part);
    } else {
      node.parts.push_back(parsed(part, depth + 1));
    }
  }
  return node;
}

bool RowFilter::holds(const Node& node, platform::Recordset& rows) {
  for (const RowCriterion& each : node.criteria) {
    if (each.holds(rows) != node.all) return !node.all;
  }
  for (const Node& each : node.parts) {
    if (holds(each, rows) != node.all) return !node.all;
  }
  return node.all;
}

bool RowFilter::holds(platform::Recordset& rows) const {
  return holds(root_, rows);
}

RowOrder::RowOrder(std::string_view text) {
  while (!trimmed(text).empty()) {
    text = trimmed(text);
    const std::size_t comma =
        std::min(text.find(',', text.starts_with('[') ? text.find(']') : 0), text.size());
    const std::string_view part = trimmed(text.substr(0, comma));
    text.remove_prefix(std::min(comma + 1, text.size()));
    const bool bracketed = part.starts_with('[');
    const std::size_t end = std::min(bracketed ? part.find(']') : part.find(' '), part.size());
    const std::string_view direction = trimmed(part.substr(std::min(end + 1, part.size())));
    Column column;
    column.name = bracketed ? part.substr(1, end - 1) : part.substr(0, end);
    column.descending = equal_ignoring_case(direction, "desc");
    const bool known =
        direction.empty() || column.descending || equal_ignoring_case(direction, "asc");
    if (!known || column.name.empty()) raise(errors::kInvalidArgument);
    columns_.push_back(std::move(column));
  }
}

std::vector<Value> RowOrder::keys(platform::Recordset& rows) const {
  std::vector<Value> keys;
  for (const Column& column : columns_) keys.push_back(rows.field(rows.ordinal(column.name)));
  return keys;
}

bool RowOrder::before(const std::vector<Value>& a, const std::vector<Value>& b) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const int order = order_of(a[i], b[i]);
    if (order != 0) return columns_[i].descending ? order > 0 : order < 0;
  }
  return false;
}

std::vector<std::int64_t> RowOrder::sorted(const std::vector<std::int64_t>& items,
                                           const std::vector<std::vector<Value>>& keys) const {
  std::vector<std::size_t> places(items.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::stable_sort(places.begin(), places.end(),
                   [&](std::size_t a, std::size_t b) { return before(keys[a], keys[b]); });
  std::vector<std::int64_t> out;
  out.reserve(items.size());
  for (const std::size_t place : places) out.push_back(items[place]);
  return out;
}

}  // namespace rk::pagehost
