#include "adapters/sqlite/statement_values.h"

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "adapters/sqlite/failure.h"

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
      return values.literals[parameter.index];
    case Parameter::Source::Caller:
      break;
  }
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
    try {
      bind_copy(statement, place, jetsql::bound_value(parameter, given_value(parameter, values)));
    } catch (const jetsql::SqlError& error) {
      raise_failure(error);
    }
  }
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
