// The functions that translated texts call, for an adapter to register with its engine by a loop
// over these tables. Each is pure: nothing global, no clock, no locale (the clock and chance come
// in as arguments). Thread rule: may be called from any thread.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace rk::jetsql {

// An argument, a view into what the engine holds.
struct Argument {
  enum class Kind : std::uint8_t { Null, Integer, Real, Text, Blob };
  Kind kind = Kind::Null;
  std::int64_t integer = 0;
  double real = 0;
  std::string_view text;  // Text (UTF-8) or Blob
};

// A result; Text is owned.
struct Answer {
  Argument::Kind kind = Argument::Kind::Null;
  std::int64_t integer = 0;
  double real = 0;
  std::string text;
};

// Raises SqlError (kTypeMismatch, kOverflow, kUnspecified) for arguments that it cannot take; the
// adapter keeps it and raises it from the statement's step.
struct Function {
  const char* name;
  int arity;  // number of arguments; -1: as many as the translator writes, which has counted them
  bool deterministic;
  void (*call)(std::span<const Argument> arguments, Answer& answer);
};

std::span<const Function> functions();

// State of an aggregate for one group; begins zeroed (default made) and is destroyed by the
// adapter.
struct Aggregation {
  std::int64_t rows = 0;
  std::int64_t place = 0;
  double mean = 0;
  double squares = 0;
  Answer kept;
};

struct Aggregate {
  const char* name;
  int arity;
  void (*step)(Aggregation& state, std::span<const Argument> arguments);
  void (*finish)(const Aggregation& state, Answer& answer);
};

std::span<const Aggregate> aggregates();

}  // namespace rk::jetsql
