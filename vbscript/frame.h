// Frame: one call in progress, and what a run keeps of the units that its code comes from.
#ifndef RK_VBSCRIPT_FRAME_H_
#define RK_VBSCRIPT_FRAME_H_

#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "value/object.h"
#include "value/value.h"
#include "vbscript/instructions.h"
#include "vbscript/script_object.h"
#include "vbscript/unit.h"

namespace rk::vbscript {

// What a call site met last: the number that its name had for such objects.
struct CallSite {
  const void* table = nullptr;
  MemberId id = kNoMember;
};

// A unit with what this run keeps for it.
struct LoadedUnit {
  std::shared_ptr<const Unit> unit;
  std::vector<CallSite> sites;
};

struct ProcedureRef {
  const Code* code = nullptr;
  LoadedUnit* unit = nullptr;
};

struct ClassRef {
  const ClassCode* code = nullptr;
  LoadedUnit* unit = nullptr;
};

using LocalVariables = std::unordered_map<std::string, std::unique_ptr<Value>>;

struct Frame {
  Frame* caller = nullptr;
  const Code* code = nullptr;
  LoadedUnit* unit = nullptr;
  ScriptObject* me = nullptr;
  Value* bases[4] = {};             // by Place: registers, constants, globals, fields
  Value* const* tables[2] = {};     // references, outer
  const Instruction* at = nullptr;  // what runs now
  bool resume_next = false;
  // Code of Execute runs in the scope of the procedure that called it.
  Frame* scope = nullptr;
  std::unique_ptr<LocalVariables> made;  // variables that such code made

  // The operands of a list: their count, then they themselves.
  std::span<const Operand> operands(std::uint32_t list) const {
    const std::uint32_t* const first = &code->lists[list];
    return {first + 1, first[0]};
  }
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_FRAME_H_
