#include "jetsql/translate.h"

#include "jetsql/days.h"
#include "jetsql/numbers.h"
#include "jetsql/parser.h"
#include "jetsql/writer.h"

namespace rk::jetsql {

std::string Translation::select_text(bool keyed, bool windowed) const {
  std::string text = head;
  if (keyed && !row_key.empty()) text += "," + row_key;
  return text + tail + (windowed ? window_limit : limit);
}

std::string Translation::reversed_text(bool keyed) const {
  std::string text = head;
  if (keyed && !row_key.empty()) text += "," + row_key;
  return text + reversed_tail + window_limit;
}

void Writer::statement(Statement& statement) {
  switch (statement.kind) {
    case Statement::Kind::Select:
      return select_statement(*statement.select);
    case Statement::Kind::Insert:
      return insert(statement);
    case Statement::Kind::Update:
      return update(statement);
    case Statement::Kind::Delete:
      return delete_rows(statement);
    default:
      return define(statement);
  }
}

Translation translate(std::string_view sql, const Schema& schema) {
  const std::unique_ptr<Tree> tree = parse(sql);
  Translation translation;
  translation.caller_parameters = tree->questions;
  Resolver resolver(sql, schema);
  Writer(sql, resolver, schema, translation).statement(tree->statement);
  return translation;
}

namespace {

using Kind = Literal::Kind;

[[noreturn]] void mismatch() {
  throw SqlError(kTypeMismatch, "Data type mismatch in criteria expression.", SqlError::kNowhere);
}

Literal text_of(std::string text) {
  Literal made;
  made.kind = Kind::Text;
  made.text = std::move(text);
  return made;
}

Literal number_of(double number) {
  Literal made;
  made.kind = Kind::Double;
  made.number = number;
  return made;
}

Literal whole_of(std::int64_t integer) {
  Literal made;
  made.kind = Kind::Integer;
  made.integer = integer;
  return made;
}

double numeric(const Literal& given) {
  switch (given.kind) {
    case Kind::Integer:
      return static_cast<double>(given.integer);
    case Kind::Boolean:
      return given.integer != 0 ? -1 : 0;
    case Kind::Text: {
      const std::optional<double> number = parse_number(given.text);
      if (!number) mismatch();
      return *number;
    }
    default:
      return given.number;
  }
}

Literal date_of(const Literal& given) {
  if (given.kind != Kind::Text) return text_of(date_text(numeric(given)));
  const std::optional<double> days = parse_date(given.text);
  if (!days) mismatch();
  return text_of(date_text(*days));
}

Literal stored_integer(const Literal& given) {
  if (given.kind == Kind::Integer) return given;
  return whole_of(whole_number(round_half_even(numeric(given))));
}

Literal stored_money(const Literal& given) {
  if (given.kind != Kind::Integer) return number_of(amount(numeric(given)));
  amount(static_cast<double>(given.integer));
  return given;
}

Literal stored_text(const Literal& given) {
  switch (given.kind) {
    case Kind::Boolean:
      return text_of(given.integer != 0 ? "True" : "False");
    case Kind::Text:
      return given;
    case Kind::Integer:
      return text_of(std::to_string(given.integer));
    case Kind::Date:
      return text_of(date_text(given.number));
    default:
      return text_of(number_text(numeric(given)));
  }
}

bool is_true(const Literal& given) {
  if (given.kind != Kind::Text) return numeric(given) != 0;
  if (given.text == "True" || given.text == "true") return true;
  if (given.text == "False" || given.text == "false") return false;
  return numeric(given) != 0;
}

Literal as_bound(const Literal& given) {
  if (given.kind == Kind::Date) return text_of(date_text(given.number));
  if (given.kind == Kind::Boolean) return whole_of(given.integer != 0 ? -1 : 0);
  return given;
}

Literal negated(const Literal& given) {
  if (given.kind == Kind::Integer) return whole_of(-given.integer);
  return number_of(-numeric(given));
}

}  // namespace

Literal bound_value(const Parameter& parameter, const Literal& given) {
  using Conversion = Parameter::Conversion;
  if (given.kind == Kind::Null) return given;
  if (parameter.negate) {
    Parameter rest = parameter;
    rest.negate = false;
    return bound_value(rest, negated(given));
  }
  switch (parameter.conversion) {
    case Conversion::None:
      return as_bound(given);
    case Conversion::Flag: {
      const bool counts = given.kind == Kind::Boolean || given.kind == Kind::Integer;
      return counts && numeric(given) == -1 ? whole_of(1) : as_bound(given);
    }
    case Conversion::StoredFlag:
      return whole_of(is_true(given) ? 1 : 0);
    case Conversion::DateText:
      return date_of(given);
    case Conversion::StoredInteger:
      return stored_integer(given);
    case Conversion::StoredNumber:
      if (given.kind == Kind::Integer) return given;
      return number_of(numeric(given));
    case Conversion::StoredMoney:
      return stored_money(given);
    case Conversion::StoredText:
      return stored_text(given);
  }
  return given;
}

}  // namespace rk::jetsql
