// Interpreter: one run of a program, with its variables and objects. One thread.
//
// Errors that the script does not trap leave as RuntimeError, the end of the page as
// platform::PageEnd; after either, no more of the script may be run but finish().
#ifndef RK_VBSCRIPT_INTERPRETER_H_
#define RK_VBSCRIPT_INTERPRETER_H_

#include <memory>
#include <string_view>

#include "value/object.h"
#include "value/value.h"
#include "vbscript/host.h"
#include "vbscript/program.h"
#include "vbscript/source.h"

namespace rk::vbscript {

class Machine;

class Interpreter {
 public:
  // The host must outlive the interpreter.
  Interpreter(const std::shared_ptr<const Program>& program, Host& host);
  // Calls finish() where the caller did not, and drops what that throws.
  ~Interpreter();
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  // The statements outside of procedures, from the first to the last.
  void run();

  // Whether there is a Sub or Function of this name by now (any letter case).
  bool defines(std::string_view procedure) const;
  // Calls one, before or after run(). A Sub answers Empty. Raises 13 where there is none, 450 for a
  // wrong count of arguments.
  Value call(std::string_view procedure, Arguments arguments);

  // Ends the life of the variables and of all objects of script classes, with their
  // Class_Terminate; those that hold one another included. Objects that the host still keeps can
  // no longer be called.
  void finish();

  // The statement that runs now, or that ran last; for traces and logs.
  SourcePlace place() const;

 private:
  std::unique_ptr<Machine> machine_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_INTERPRETER_H_
