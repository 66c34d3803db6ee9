// The translator's functions and aggregates, registered with a real SQLite database for tests.
#pragma once

#include <sqlite3.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "jetsql/functions.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {

inline Argument argument_of(sqlite3_value* value) {
  Argument argument;
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      argument.kind = Argument::Kind::Integer;
      argument.integer = sqlite3_value_int64(value);
      break;
    case SQLITE_FLOAT:
      argument.kind = Argument::Kind::Real;
      argument.real = sqlite3_value_double(value);
      break;
    case SQLITE_TEXT: {
      argument.kind = Argument::Kind::Text;
      const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
      argument.text = std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
      break;
    }
    default:
      break;
  }
  return argument;
}

inline std::vector<Argument> arguments_of(int count, sqlite3_value** values) {
  std::vector<Argument> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(argument_of(values[i]));
  return arguments;
}

inline void answer_with(sqlite3_context* context, const Answer& answer) {
  switch (answer.kind) {
    case Argument::Kind::Integer:
      sqlite3_result_int64(context, answer.integer);
      break;
    case Argument::Kind::Real:
      sqlite3_result_double(context, answer.real);
      break;
    case Argument::Kind::Text:
      sqlite3_result_text(context, answer.text.data(), static_cast<int>(answer.text.size()),
                          SQLITE_TRANSIENT);
      break;
    default:
      sqlite3_result_null(context);
  }
}

inline void call(sqlite3_context* context, int count, sqlite3_value** values) {
  const auto* function = static_cast<const Function*>(sqlite3_user_data(context));
  try {
    Answer answer;
    const std::vector<Argument> arguments = arguments_of(count, values);
    function->call(arguments, answer);
    answer_with(context, answer);
  } catch (const SqlError& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

// What an aggregate refused, with its number, for who ran the statement.
inline std::optional<SqlError>& refusal_of_aggregate() {
  static std::optional<SqlError> refusal;
  return refusal;
}

inline void step(sqlite3_context* context, int count, sqlite3_value** values) {
  const auto* aggregate = static_cast<const Aggregate*>(sqlite3_user_data(context));
  auto** state =
      static_cast<Aggregation**>(sqlite3_aggregate_context(context, sizeof(Aggregation*)));
  if (*state == nullptr) *state = new Aggregation();
  try {
    const std::vector<Argument> arguments = arguments_of(count, values);
    aggregate->step(**state, arguments);
  } catch (const SqlError& error) {  // nothing may pass through the engine
    refusal_of_aggregate() = error;
    sqlite3_result_error(context, error.what(), -1);
  }
}

inline void finish(sqlite3_context* context) {
  const auto* aggregate = static_cast<const Aggregate*>(sqlite3_user_data(context));
  auto** state = static_cast<Aggregation**>(sqlite3_aggregate_context(context, 0));
  if (state == nullptr || *state == nullptr) return;
  Answer answer;
  aggregate->finish(**state, answer);
  answer_with(context, answer);
  delete *state;
}

inline void register_function(sqlite3* database, const Function& function) {
  const int flags = SQLITE_UTF8 | (function.deterministic ? SQLITE_DETERMINISTIC : 0);
  sqlite3_create_function_v2(database, function.name, function.arity, flags,
                             const_cast<Function*>(&function), call, nullptr, nullptr, nullptr);
}

inline void register_aggregate(sqlite3* database, const Aggregate& aggregate) {
  sqlite3_create_function_v2(database, aggregate.name, aggregate.arity, SQLITE_UTF8,
                             const_cast<Aggregate*>(&aggregate), nullptr, step, finish, nullptr);
}

inline void register_functions(sqlite3* database) {
  for (const Function& function : functions()) register_function(database, function);
  for (const Aggregate& aggregate : aggregates()) register_aggregate(database, aggregate);
}

}  // namespace rk::jetsql
