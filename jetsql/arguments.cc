#include "jetsql/arguments.h"

#include <optional>

#include "jetsql/days.h"
#include "jetsql/letters.h"
#include "jetsql/numbers.h"
#include "jetsql/sql_error.h"
#include "jetsql/translate.h"

namespace rk::jetsql {

namespace {

[[noreturn]] void mismatch() {
  throw SqlError(kTypeMismatch, "Data type mismatch in criteria expression.", SqlError::kNowhere);
}

}  // namespace

bool any_null(Arguments arguments) {
  for (const Argument& argument : arguments) {
    if (argument.kind == Argument::Kind::Null) return true;
  }
  return false;
}

double number_argument(const Argument& argument) {
  switch (argument.kind) {
    case Argument::Kind::Integer:
      return static_cast<double>(argument.integer);
    case Argument::Kind::Real:
      return argument.real;
    case Argument::Kind::Text: {
      if (const std::optional<double> number = parse_number(argument.text)) return *number;
      if (const std::optional<double> days = parse_date(argument.text)) return *days;
      if (same_letters(argument.text, "true")) return -1;
      if (same_letters(argument.text, "false")) return 0;
      mismatch();
    }
    default:
      mismatch();
  }
}

std::int64_t whole_argument(const Argument& argument) {
  if (argument.kind == Argument::Kind::Integer) return argument.integer;
  return whole_number(round_half_even(number_argument(argument)));
}

double days_argument(const Argument& argument) {
  if (argument.kind != Argument::Kind::Text) return number_argument(argument);
  if (const std::optional<double> days = parse_date(argument.text)) return *days;
  return number_argument(argument);
}

std::string text_argument(const Argument& argument) {
  switch (argument.kind) {
    case Argument::Kind::Integer:
      return std::to_string(argument.integer);
    case Argument::Kind::Real:
      return number_text(argument.real);
    case Argument::Kind::Text:
      return std::string(argument.text);
    case Argument::Kind::Null:
      return "";
    default:
      mismatch();
  }
}

void answer_number(Answer& answer, double value) {
  answer.kind = Argument::Kind::Real;
  answer.real = value;
}

void answer_whole(Answer& answer, std::int64_t value) {
  answer.kind = Argument::Kind::Integer;
  answer.integer = value;
}

void answer_flag(Answer& answer, bool value) {
  answer_whole(answer, value ? 1 : 0);
}

void answer_text(Answer& answer, std::string value) {
  answer.kind = Argument::Kind::Text;
  answer.text = std::move(value);
}

void answer_date(Answer& answer, double days) {
  answer_text(answer, date_text(days));
}

void answer_same(Answer& answer, const Argument& argument) {
  answer.kind = argument.kind;
  answer.integer = argument.integer;
  answer.real = argument.real;
  answer.text.assign(argument.text);
}

std::u16string units_of(std::string_view text) {
  std::u16string units;
  units.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = [&](std::size_t at) {
      return static_cast<std::uint32_t>(static_cast<unsigned char>(text[at]));
    };
    const std::uint32_t first = byte(i++);
    if (first < 0x80) {
      units += static_cast<char16_t>(first);
      continue;
    }
    const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    if (more == 0 || i + more > text.size()) {
      units += u'\xFFFD';
      continue;
    }
    std::uint32_t point = first & (0x3FU >> more);
    for (std::size_t k = 0; k < more; ++k) point = point << 6U | (byte(i++) & 0x3FU);
    if (point >= 0x10000) {
      point -= 0x10000;
      units += static_cast<char16_t>(0xD800U + (point >> 10U & 0x3FFU));
      point = 0xDC00U + (point & 0x3FFU);
    }
    units += static_cast<char16_t>(point);
  }
  return units;
}

std::string text_of_units(std::u16string_view units) {
  std::string text;
  text.reserve(units.size());
  const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
  for (std::size_t i = 0; i < units.size(); ++i) {
    std::uint32_t point = units[i];
    const bool pair = point >= 0xD800 && point < 0xDC00 && i + 1 < units.size() &&
                      units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000;
    if (pair) point = 0x10000 + ((point - 0xD800) << 10U) + (units[++i] - 0xDC00U);
    if (point < 0x80) {
      add(point);
    } else if (point < 0x800) {
      add(0xC0 | point >> 6U);
      add(0x80 | (point & 0x3FU));
    } else {
      if (point >= 0x10000) {
        add(0xF0 | point >> 18U);
        add(0x80 | (point >> 12U & 0x3FU));
      } else {
        add(0xE0 | point >> 12U);
      }
      add(0x80 | (point >> 6U & 0x3FU));
      add(0x80 | (point & 0x3FU));
    }
  }
  return text;
}

}  // namespace rk::jetsql
