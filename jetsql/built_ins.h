// The functions that Jet SQL knows: how many arguments each takes, what it answers, and the
// function of functions.h (or of the engine) that stands for it. Thread rule: constant.
#pragma once

#include <cstdint>
#include <string_view>

#include "jetsql/schema.h"

namespace rk::jetsql {

struct BuiltIn {
  // How a call is written.
  enum class Form : std::uint8_t {
    Plain,      // target(arguments)
    Aggregate,  // target(argument), its type that of the argument where `type` is Unknown
    Count,
    First,
    Last,
    IIf,
    Switch,
    Choose,
    Nz,
    IsNull,
    Rnd,
    Now,
    Today,
    Clock
  };
  std::string_view name;  // in small letters
  int least = 0;
  int most = 0;
  Type type = Type::Unknown;
  Form form = Form::Plain;
  std::string_view target;

  bool aggregate() const {
    return form == Form::Aggregate || form == Form::Count || form == Form::First ||
           form == Form::Last;
  }
};

// Null where Jet knows no such function. `name` in small letters.
const BuiltIn* built_in(std::string_view name);

}  // namespace rk::jetsql
