// Unit: what one compilation made, as instructions and tables. Immutable once compiled.
//
// A page is one unit; each text run by Execute, ExecuteGlobal or Eval is another, whose names of
// variables outside are bound to their places when it is compiled (outer).
#ifndef RK_VBSCRIPT_UNIT_H_
#define RK_VBSCRIPT_UNIT_H_

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "value/value.h"
#include "vbscript/instructions.h"
#include "vbscript/source.h"

namespace rk::vbscript {

struct Mark {
  std::uint32_t first = 0;  // instruction
  SourcePlace place;
  bool resumable = true;
  // Registers from here on hold nothing between this statement and its neighbours.
  std::uint32_t first_temporary = 0;
};

// A variable of a procedure, for Execute and Eval in it.
struct LocalName {
  std::string folded;
  Operand place = kNoOperand;
};

// A name that a procedure uses undeclared: the script's variable where there is one when the
// procedure begins, else a variable of its own.
struct SharedName {
  std::uint32_t reference = 0;
  std::uint32_t own_register = 0;
  std::uint32_t global = 0;
};

struct Code {
  std::string name;             // as written
  bool is_function = false;     // answers a value
  int owner = -1;               // class whose fields it sees
  std::vector<bool> by_value;   // one a parameter
  std::uint32_t registers = 0;  // parameters first
  std::uint32_t references = 0;
  Operand result = kNoOperand;
  std::vector<Instruction> instructions;
  std::vector<std::uint32_t> lists;
  std::vector<Mark> marks;
  std::vector<SharedName> shared;
  std::vector<LocalName> names;

  std::size_t parameters() const { return by_value.size(); }
};

struct ClassField {
  bool is_array = false;
  std::vector<std::int32_t> bounds;
};

// Code indexes are -1 where there is none.
struct ClassMember {
  std::string folded;
  std::string text;
  int field = -1;
  int method = -1;
  int property_get = -1;
  int property_let = -1;
  int property_set = -1;
  // What may be reached from outside of the class.
  bool is_public = false;
  bool get_public = false;
  bool let_public = false;
  bool set_public = false;
};

struct ClassCode {
  std::string name;
  std::vector<ClassField> fields;
  std::vector<ClassMember> members;
  std::unordered_map<std::string, int> member_index;
  int default_member = -1;
  int initialize = -1;
  int terminate = -1;
};

struct Global {
  std::string folded;
  std::string text;
  bool defined = false;   // declared, or assigned by statements outside of procedures
  bool ask_host = false;  // neither declared nor assigned
  bool is_constant = false;
};

struct Binding {
  enum class Kind : std::uint8_t { Variable, Constant, Procedure, Class };
  Kind kind = Kind::Variable;
  std::uint32_t index = 0;  // of the global, the constant, the code, the class
};

struct Unit {
  std::vector<std::string> files;
  bool option_explicit = false;
  std::vector<Value> constants;
  std::vector<std::unique_ptr<Code>> codes;  // the first is what stands outside of procedures
  std::vector<ClassCode> classes;
  std::vector<Global> globals;
  std::unordered_map<std::string, Binding> names;  // folded
  std::uint32_t call_sites = 0;
  std::vector<Value*> outer;  // of run-time units only
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_UNIT_H_
