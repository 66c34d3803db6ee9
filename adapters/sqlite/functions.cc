#include "adapters/sqlite/functions.h"

#include <sqlite3.h>

#include <memory>
#include <utility>

namespace rk::sqlite {
namespace {

using jetsql::Aggregation;
using jetsql::Answer;
using jetsql::Argument;

std::string_view bytes_of(const void* data, sqlite3_value* value) {
  const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
  return {static_cast<const char*>(data), size};
}

Argument argument_of(sqlite3_value* value) {
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
    case SQLITE_TEXT:
      argument.kind = Argument::Kind::Text;
      argument.text = bytes_of(sqlite3_value_text(value), value);
      break;
    case SQLITE_BLOB:
      argument.kind = Argument::Kind::Blob;
      argument.text = bytes_of(sqlite3_value_blob(value), value);
      break;
    default:
      break;
  }
  return argument;
}

std::vector<Argument> arguments_of(int count, sqlite3_value** values) {
  std::vector<Argument> arguments;
  arguments.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) arguments.push_back(argument_of(values[i]));
  return arguments;
}

void answer_with(sqlite3_context* context, const Answer& answer) {
  switch (answer.kind) {
    case Argument::Kind::Null:
      sqlite3_result_null(context);
      return;
    case Argument::Kind::Integer:
      sqlite3_result_int64(context, answer.integer);
      return;
    case Argument::Kind::Real:
      sqlite3_result_double(context, answer.real);
      return;
    case Argument::Kind::Text:
      sqlite3_result_text64(context, answer.text.data(), answer.text.size(), SQLITE_TRANSIENT,
                            SQLITE_UTF8);
      return;
    case Argument::Kind::Blob:
      sqlite3_result_blob64(context, answer.text.data(), answer.text.size(), SQLITE_TRANSIENT);
      return;
  }
}

Functions::Binding& binding_of(sqlite3_context* context) {
  return *static_cast<Functions::Binding*>(sqlite3_user_data(context));
}

// An exception must not cross the engine's frames.
template <class Work>
void guarded(sqlite3_context* context, Work work) {
  try {
    work();
  } catch (const jetsql::SqlError& error) {
    binding_of(context).owner->keep_error(error);
    sqlite3_result_error(context, error.what(), -1);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

void call_function(sqlite3_context* context, int count, sqlite3_value** values) {
  guarded(context, [&] {
    Answer answer;
    binding_of(context).function->call(arguments_of(count, values), answer);
    answer_with(context, answer);
  });
}

// Where the engine keeps the pointer to a group's state; null memory where there is none yet.
Aggregation** state_of(sqlite3_context* context, int size) {
  return static_cast<Aggregation**>(sqlite3_aggregate_context(context, size));
}

void step_aggregate(sqlite3_context* context, int count, sqlite3_value** values) {
  guarded(context, [&] {
    Aggregation** state = state_of(context, sizeof(Aggregation*));
    if (state == nullptr) throw std::bad_alloc();
    if (*state == nullptr) *state = new Aggregation();
    binding_of(context).aggregate->step(**state, arguments_of(count, values));
  });
}

// The engine calls this for an abandoned statement too, so that the state never leaks.
void finish_aggregate(sqlite3_context* context) {
  Aggregation** state = state_of(context, 0);
  const std::unique_ptr<Aggregation> owned(state != nullptr ? std::exchange(*state, nullptr)
                                                            : nullptr);
  guarded(context, [&] {
    Answer answer;
    binding_of(context).aggregate->finish(owned ? *owned : Aggregation(), answer);
    answer_with(context, answer);
  });
}

}  // namespace

int Functions::add_to(sqlite3* database) {
  const auto functions = jetsql::functions();
  const auto aggregates = jetsql::aggregates();
  bindings_.clear();
  bindings_.reserve(functions.size() + aggregates.size());  // the engine keeps their addresses
  for (const jetsql::Function& function : functions) {
    bindings_.push_back({this, &function, nullptr});
    const int flags = SQLITE_UTF8 | (function.deterministic ? SQLITE_DETERMINISTIC : 0);
    const int code =
        sqlite3_create_function_v2(database, function.name, function.arity, flags,
                                   &bindings_.back(), call_function, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) return code;
  }
  for (const jetsql::Aggregate& aggregate : aggregates) {
    bindings_.push_back({this, nullptr, &aggregate});
    const int code = sqlite3_create_function_v2(database, aggregate.name, aggregate.arity,
                                                SQLITE_UTF8, &bindings_.back(), nullptr,
                                                step_aggregate, finish_aggregate, nullptr);
    if (code != SQLITE_OK) return code;
  }
  return SQLITE_OK;
}

std::optional<jetsql::SqlError> Functions::take_error() {
  return std::exchange(error_, std::nullopt);
}

}  // namespace rk::sqlite
