#include "vbscript/interpreter.h"

#include "vbscript/machine.h"
#include "vbscript/runtime_error.h"

namespace rk::vbscript {

Interpreter::Interpreter(const std::shared_ptr<const Program>& program, Host& host)
    : machine_(std::make_unique<Machine>(program->unit(), host)) {}

Interpreter::~Interpreter() = default;

void Interpreter::run() {
  try {
    machine_->run();
  } catch (const ScriptError& error) {
    machine_->rethrow(error);
  }
}

bool Interpreter::defines(std::string_view procedure) const {
  return machine_->defines(procedure);
}

Value Interpreter::call(std::string_view procedure, Arguments arguments) {
  try {
    return machine_->call_named(procedure, arguments);
  } catch (const ScriptError& error) {
    machine_->rethrow(error);
  }
}

void Interpreter::finish() {
  machine_->finish();
}

SourcePlace Interpreter::place() const {
  return machine_->place();
}

}  // namespace rk::vbscript
