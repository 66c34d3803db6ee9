// Functions of texts. Lengths and places count 16-bit units.
#include <algorithm>

#include "jetsql/arguments.h"
#include "jetsql/days.h"
#include "jetsql/letters.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {

namespace {

using Kind = Argument::Kind;

[[noreturn]] void invalid_argument() {
  throw SqlError(kUnspecified, "Invalid procedure call.", SqlError::kNowhere);
}

// A text made by repeating may be this long: a page shows no more, and a slip of a digit must not
// take the machine's memory.
constexpr std::int64_t kMaxRepeated = 1 << 20;

bool is_ascii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// `count` units from unit `from` on; counts past the end are taken as far as the text goes.
std::string cut(const std::string& text, std::int64_t from, std::int64_t count) {
  const auto within = [](std::int64_t value, std::size_t size) {
    return static_cast<std::size_t>(std::min<std::int64_t>(value, static_cast<std::int64_t>(size)));
  };
  if (is_ascii(text)) return text.substr(within(from, text.size()), within(count, text.size()));
  const std::u16string units = units_of(text);
  return text_of_units(
      std::u16string_view(units).substr(within(from, units.size()), within(count, units.size())));
}

std::int64_t length_of(const std::string& text) {
  return static_cast<std::int64_t>(is_ascii(text) ? text.size() : units_of(text).size());
}

void left(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t count = whole_argument(a[1]);
  if (count < 0) invalid_argument();
  answer_text(answer, cut(text_argument(a[0]), 0, count));
}

void right(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t count = whole_argument(a[1]);
  if (count < 0) invalid_argument();
  const std::string text = text_argument(a[0]);
  answer_text(answer, cut(text, std::max<std::int64_t>(0, length_of(text) - count), count));
}

void mid(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t from = whole_argument(a[1]);
  std::string text = text_argument(a[0]);
  const std::int64_t count =
      a.size() > 2 ? whole_argument(a[2]) : static_cast<std::int64_t>(text.size());
  if (from < 1 || count < 0) invalid_argument();
  answer_text(answer, cut(text, from - 1, count));
}

void len(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_whole(answer, length_of(text_argument(a[0])));
}

std::string trimmed(const std::string& text, bool front, bool back) {
  std::size_t begin = 0;
  std::size_t end = text.size();
  while (front && begin < end && text[begin] == ' ') ++begin;
  while (back && end > begin && text[end - 1] == ' ') --end;
  return text.substr(begin, end - begin);
}

template <bool Front, bool Back>
void trim(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_text(answer, trimmed(text_argument(a[0]), Front, Back));
}

// Letters outside ASCII whose other case lies a fixed step away: Latin-1, Greek, Cyrillic, full
// width.
struct CaseRange {
  char16_t first, last;
  int step;
};
constexpr CaseRange kUpperRanges[] = {
    {0x00C0, 0x00D6, 32}, {0x00D8, 0x00DE, 32}, {0x0391, 0x03A1, 32}, {0x03A3, 0x03A9, 32},
    {0x0410, 0x042F, 32}, {0x0400, 0x040F, 80}, {0xFF21, 0xFF3A, 32}};

char16_t lower_unit(char16_t unit) {
  if (unit < 0x80) return static_cast<char16_t>(lower(static_cast<char>(unit)));
  for (const CaseRange& range : kUpperRanges) {
    if (unit >= range.first && unit <= range.last) return static_cast<char16_t>(unit + range.step);
  }
  return unit;
}

char16_t upper_unit(char16_t unit) {
  if (unit < 0x80) return static_cast<char16_t>(upper(static_cast<char>(unit)));
  for (const CaseRange& range : kUpperRanges) {
    if (unit >= range.first + range.step && unit <= range.last + range.step) {
      return static_cast<char16_t>(unit - range.step);
    }
  }
  return unit;
}

template <char16_t (*Unit)(char16_t)>
void change_case(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  std::u16string units = units_of(text_argument(a[0]));
  for (char16_t& unit : units) unit = Unit(unit);
  answer_text(answer, text_of_units(units));
}

// Compare arguments: 0 tells letter case apart, 1 and 2 do not.
bool folds_case(Arguments a, std::size_t place, bool otherwise) {
  return a.size() > place ? whole_argument(a[place]) != 0 : otherwise;
}

std::u16string searched(const Argument& argument, bool fold) {
  std::u16string units = units_of(text_argument(argument));
  if (fold) {
    for (char16_t& unit : units) unit = lower_unit(unit);
  }
  return units;
}

// InStr([start,] text, wanted[, compare])
void in_str(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::size_t first = a.size() > 2 ? 1 : 0;
  const std::int64_t start = a.size() > 2 ? whole_argument(a[0]) : 1;
  if (start < 1) invalid_argument();
  const bool fold = folds_case(a, 3, true);
  const std::u16string text = searched(a[first], fold);
  const std::u16string wanted = searched(a[first + 1], fold);
  const auto from = static_cast<std::size_t>(start - 1);
  const std::size_t place = from > text.size() ? std::u16string::npos : text.find(wanted, from);
  answer_whole(answer, place == std::u16string::npos ? 0 : static_cast<std::int64_t>(place) + 1);
}

// InStrRev(text, wanted[, start[, compare]])
void in_str_rev(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const bool fold = folds_case(a, 3, false);
  const std::u16string text = searched(a[0], fold);
  const std::u16string wanted = searched(a[1], fold);
  std::int64_t start = a.size() > 2 ? whole_argument(a[2]) : -1;
  if (start == 0 || start < -1) invalid_argument();
  const auto size = static_cast<std::int64_t>(text.size());
  if (start == -1) start = size;
  if (start > size || static_cast<std::int64_t>(wanted.size()) > start)
    return answer_whole(answer, 0);
  const std::size_t place = text.rfind(wanted, static_cast<std::size_t>(start) - wanted.size());
  answer_whole(answer, place == std::u16string::npos ? 0 : static_cast<std::int64_t>(place) + 1);
}

// Replace(text, wanted, other[, start[, count[, compare]]])
void replace(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const bool fold = folds_case(a, 5, false);
  const std::u16string text = units_of(text_argument(a[0]));
  const std::u16string folded = searched(a[0], fold);
  const std::u16string wanted = searched(a[1], fold);
  const std::u16string other = units_of(text_argument(a[2]));
  const std::int64_t start = a.size() > 3 ? whole_argument(a[3]) : 1;
  std::int64_t left_over = a.size() > 4 ? whole_argument(a[4]) : -1;
  if (start < 1) invalid_argument();
  std::u16string made;
  auto at = static_cast<std::size_t>(start - 1);
  while (at < text.size()) {
    const std::size_t place =
        wanted.empty() || left_over == 0 ? std::u16string::npos : folded.find(wanted, at);
    made.append(text, at, place == std::u16string::npos ? place : place - at);
    if (place == std::u16string::npos) break;
    made += other;
    at = place + wanted.size();
    --left_over;
  }
  answer_text(answer, text_of_units(made));
}

void str_comp(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const bool fold = folds_case(a, 2, true);
  const int order = searched(a[0], fold).compare(searched(a[1], fold));
  answer_whole(answer, order < 0 ? -1 : order > 0 ? 1 : 0);
}

void str_reverse(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  std::u16string units = units_of(text_argument(a[0]));
  std::reverse(units.begin(), units.end());
  answer_text(answer, text_of_units(units));
}

std::string repeated(std::int64_t count, const std::string& text) {
  if (count < 0 || count > kMaxRepeated) invalid_argument();
  std::string made;
  for (std::int64_t i = 0; i < count; ++i) made += text;
  return made;
}

void space(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_text(answer, repeated(whole_argument(a[0]), " "));
}

std::string character(std::int64_t code) {
  if (code < -32768 || code > 65535) invalid_argument();
  return text_of_units(std::u16string(1, static_cast<char16_t>(code)));
}

// String(count, character or its code)
void string_of(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t count = whole_argument(a[0]);
  if (a[1].kind != Kind::Text)
    return answer_text(answer, repeated(count, character(whole_argument(a[1]))));
  if (a[1].text.empty()) invalid_argument();
  answer_text(answer, repeated(count, cut(std::string(a[1].text), 0, 1)));
}

void asc(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::u16string units = units_of(text_argument(a[0]));
  if (units.empty()) invalid_argument();
  answer_whole(answer, units[0]);
}

void chr(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_text(answer, character(whole_argument(a[0])));
}

void format(Arguments a, Answer& answer) {
  const std::string pattern = a.size() > 1 ? text_argument(a[1]) : "";
  answer_text(answer, formatted(a[0], pattern));
}

constexpr Function kFunctions[] = {
    {"jet_left", 2, true, left},
    {"jet_right", 2, true, right},
    {"jet_mid", -1, true, mid},
    {"jet_len", 1, true, len},
    {"jet_trim", 1, true, trim<true, true>},
    {"jet_ltrim", 1, true, trim<true, false>},
    {"jet_rtrim", 1, true, trim<false, true>},
    {"jet_lcase", 1, true, change_case<lower_unit>},
    {"jet_ucase", 1, true, change_case<upper_unit>},
    {"jet_instr", -1, true, in_str},
    {"jet_instrrev", -1, true, in_str_rev},
    {"jet_replace", -1, true, replace},
    {"jet_strcomp", -1, true, str_comp},
    {"jet_strreverse", 1, true, str_reverse},
    {"jet_space", 1, true, space},
    {"jet_string", 2, true, string_of},
    {"jet_asc", 1, true, asc},
    {"jet_chr", 1, true, chr},
    {"jet_format", -1, true, format},
};

}  // namespace

std::span<const Function> text_functions() {
  return kFunctions;
}

}  // namespace rk::jetsql
