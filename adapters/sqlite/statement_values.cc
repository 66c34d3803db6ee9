#include "adapters/sqlite/statement_values.h"

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "adapters/sqlite/failure.h"
#include "adapters/sqlite/field_values.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::sqlite {
namespace {

using jetsql::Literal;
using jetsql::Parameter;

void bind(sqlite3_stmt* statement, int place, const Literal& value,
          sqlite3_destructor_type lifetime) {
  switch (value.kind) {
    case Literal::Kind::Text:
      sqlite3_bind_text64(statement, place, value.text.data(), value.text.size(), lifetime,
                          SQLITE_UTF8);
      return;
    case Literal::Kind::Integer:
    case Literal::Kind::Boolean:
      sqlite3_bind_int64(statement, place, value.integer);
      return;
    case Literal::Kind::Double:
    case Literal::Kind::Date:
      sqlite3_bind_double(statement, place, value.number);
      return;
    case Literal::Kind::Null:
      sqlite3_bind_null(statement, place);
      return;
  }
}

Literal date_literal(double days) {
  Literal literal;
  literal.kind = Literal::Kind::Date;
  literal.number = days;
  return literal;
}

Literal given_value(const Parameter& parameter, const RunValues& values) {
  switch (parameter.source) {
    case Parameter::Source::Now:
      return date_literal(values.now);
    case Parameter::Source::Today:
      return date_literal(std::floor(values.now));
    case Parameter::Source::Clock:
      return date_literal(values.now - std::floor(values.now));
    case Parameter::Source::Literal:
    case Parameter::Source::Caller:
      break;
  }
  return values.literals[parameter.index];
}

const Value& page_value(const Parameter& parameter, const RunValues& values) {
  if (parameter.index < values.bound.size()) return values.bound[parameter.index];
  raise_failure(jetsql::SqlError(jetsql::kNoValueGiven,
                                 "No value given for a parameter (\"?\") of the statement",
                                 jetsql::SqlError::kNowhere));
}

// Whether a literal is bound just as it stands.
bool is_plain(const Parameter& parameter, const RunValues& values) {
  if (parameter.source != Parameter::Source::Literal ||
      parameter.conversion != Parameter::Conversion::None || parameter.negate) {
    return false;
  }
  const Literal::Kind kind = values.literals[parameter.index].kind;
  return kind != Literal::Kind::Date && kind != Literal::Kind::Boolean;
}

void bind_converted(sqlite3_stmt* statement, int place, const Parameter& parameter,
                    const Literal& given) {
  try {
    bind_copy(statement, place, jetsql::bound_value(parameter, given));
  } catch (const jetsql::SqlError& error) {
    raise_failure(error);
  }
}

}  // namespace

void bind_values(sqlite3_stmt* statement, const std::vector<Parameter>& parameters,
                 const RunValues& values) {
  const auto wanted = static_cast<std::size_t>(sqlite3_bind_parameter_count(statement));
  for (std::size_t i = 0; i < std::min(wanted, parameters.size()); ++i) {
    const Parameter& parameter = parameters[i];
    const int place = static_cast<int>(i) + 1;
    if (is_plain(parameter, values)) {
      bind(statement, place, values.literals[parameter.index], SQLITE_STATIC);
      continue;
    }
    if (parameter.source == Parameter::Source::Caller) {
      bind_value(statement, place, parameter, page_value(parameter, values));
      continue;
    }
    bind_converted(statement, place, parameter, given_value(parameter, values));
  }
}

void bind_value(sqlite3_stmt* statement, int place, const Parameter& parameter,
                const Value& value) {
  bool is_bytes = false;
  const Literal literal = literal_of(value, is_bytes);
  if (!is_bytes) return bind_converted(statement, place, parameter, literal);
  const Value plain = plain_value(value);
  const std::string& bytes = plain.as_array().bytes();
  sqlite3_bind_blob64(statement, place, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
}

void bind_copy(sqlite3_stmt* statement, int place, const Literal& value) {
  bind(statement, place, value, SQLITE_TRANSIENT);
}

void append_key(std::string& out, const std::vector<Literal>& literals) {
  for (const Literal& literal : literals) {
    out += static_cast<char>(literal.kind);
    if (literal.kind == Literal::Kind::Text) {
      out += std::to_string(literal.text.size());
      out += ':';
      out += literal.text;
      continue;
    }
    const bool whole =
        literal.kind == Literal::Kind::Integer || literal.kind == Literal::Kind::Boolean;
    const void* bytes = whole ? static_cast<const void*>(&literal.integer) : &literal.number;
    out.append(static_cast<const char*>(bytes), sizeof(double));
  }
}

}  // namespace rk::sqlite
