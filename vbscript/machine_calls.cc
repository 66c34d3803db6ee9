#include <array>
#include <memory>
#include <utility>

#include "vbscript/argument_buffer.h"
#include "vbscript/built_ins.h"
#include "vbscript/machine.h"
#include "vbscript/names.h"

namespace rk::vbscript {

namespace {

// References of a frame that fit on the stack.
constexpr std::size_t kInlineReferences = 12;

}  // namespace

// A frame's registers and its place in the chain of frames, by scope.
class Machine::CallDepth {
 public:
  CallDepth(Machine& machine, Frame& frame)
      : machine_(machine),
        frame_(frame),
        registers_(machine.registers_.take(frame.code->registers)) {
    frame.caller = machine.frame_;
    frame.bases[0] = registers_;
    machine.frame_ = &frame;
    ++machine.depth_;
  }
  ~CallDepth() {
    if (frame_.caller == nullptr) machine_.last_place_ = machine_.place();
    machine_.registers_.give_back(registers_, frame_.code->registers);
    machine_.frame_ = frame_.caller;
    --machine_.depth_;
  }
  CallDepth(const CallDepth&) = delete;
  CallDepth& operator=(const CallDepth&) = delete;

 private:
  Machine& machine_;
  Frame& frame_;
  Value* registers_;
};

void Machine::call(const ProcedureRef& procedure, ScriptObject* me, Arguments arguments,
                   Value* result) {
  const Code& code = *procedure.code;
  if (arguments.size() != code.parameters()) raise_about(errors::kWrongArgumentCount, code.name);
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  if (here < stack_floor_ || depth_ >= kMaxCallDepth) raise(errors::kOutOfStack);
  turn();
  const Ref<ScriptObject> kept(me);
  Frame frame;
  frame.code = &code;
  frame.unit = procedure.unit;
  frame.me = me;
  frame.scope = std::exchange(next_scope_, nullptr);
  frame.at = code.instructions.data();
  const Unit& unit = *procedure.unit->unit;
  const CallDepth depth(*this, frame);
  frame.bases[1] = const_cast<Value*>(unit.constants.data());
  frame.bases[2] = globals_.data();
  frame.bases[3] = me == nullptr ? nullptr : me->fields().data();
  std::array<Value*, kInlineReferences> few;
  std::unique_ptr<Value*[]> many;
  if (code.references > few.size()) many = std::make_unique<Value*[]>(code.references);
  Value** const references = many ? many.get() : few.data();
  frame.tables[0] = references;
  frame.tables[1] = unit.outer.data();
  std::size_t next = 0;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (code.by_value[i]) {
      frame.bases[0][i] = *arguments[i];
    } else {
      references[next++] = arguments[i];
    }
  }
  for (const SharedName& name : code.shared) {
    references[name.reference] =
        defined_[name.global] != 0 ? &globals_[name.global] : &frame.bases[0][name.own_register];
  }
  execute(frame);
  if (result != nullptr && code.result != kNoOperand) {
    *result = std::move(frame.bases[0][index_of(code.result)]);
  }
}

// --- instructions -----------------------------------------------------------------------------

void Machine::collect(Frame& frame, std::span<const Operand> operands, ArgumentBuffer& buffer) {
  for (const Operand o : operands) {
    if (place_of(o) == Place::Constant) {
      buffer.add_copy(at(frame, o));
    } else {
      buffer.add(at(frame, o));
    }
  }
}

void Machine::call_procedure(Frame& frame, const Instruction& i) {
  ArgumentBuffer buffer;
  collect(frame, frame.operands(i.c), buffer);
  Value result;
  call(procedures_[i.b], nullptr, buffer.arguments(), &result);
  at(frame, i.a) = std::move(result);
}

void Machine::call_own(Frame& frame, const Instruction& i) {
  ArgumentBuffer buffer;
  collect(frame, frame.operands(i.c), buffer);
  Value result;
  const ProcedureRef callee{frame.unit->unit->codes[i.b].get(), frame.unit};
  call(callee, frame.me, buffer.arguments(), &result);
  at(frame, i.a) = std::move(result);
}

// A name that the script does not define, with brackets: a procedure made at run time, or the
// default member of an object of the host.
void Machine::call_name(Frame& frame, const Instruction& i) {
  const Global& global = main_.unit->globals[i.b];
  ArgumentBuffer buffer;
  collect(frame, frame.operands(i.c), buffer);
  Value result;
  if (!call_made(frame, global.folded, buffer.arguments(), result)) {
    const Value* const made = made_here(frame, global.folded);
    const Value& named = made != nullptr ? *made : globals_[i.b];
    if (made == nullptr && defined_[i.b] == 0 && main_.unit->option_explicit) {
      raise_about(errors::kUndefinedVariable, global.text);
    }
    if (!named.is_object() && !named.is_array()) raise_about(errors::kTypeMismatch, global.text);
    index(frame, named, frame.operands(i.c), result);
  }
  at(frame, i.a) = std::move(result);
}

void Machine::load_name(Frame& frame, const Instruction& i) {
  const Global& global = main_.unit->globals[i.b];
  if (const Value* const made = made_here(frame, global.folded)) {
    at(frame, i.a) = *made;
    return;
  }
  if (defined_[i.b] != 0) {
    at(frame, i.a) = globals_[i.b];
    return;
  }
  Value result;
  if (!call_made(frame, global.folded, {}, result)) {
    if (main_.unit->option_explicit) raise_about(errors::kUndefinedVariable, global.text);
  }
  at(frame, i.a) = std::move(result);
}

// A variable that code of Execute made in this procedure.
Value* Machine::made_here(Frame& frame, const std::string& folded) {
  if (!frame.made) return nullptr;
  const auto made = frame.made->find(folded);
  return made == frame.made->end() ? nullptr : made->second.get();
}

// A name that nothing defines is a variable from here on, but where it is passed it may be a
// function made at run time: then its place holds what the function answers.
void Machine::check_name(Frame& frame, const Instruction& i) {
  const Global& global = main_.unit->globals[i.b];
  if (i.n != 0) {
    Value result;
    if (call_made(frame, global.folded, {}, result)) {
      globals_[i.b] = std::move(result);
      return;
    }
  }
  if (main_.unit->option_explicit) raise_about(errors::kUndefinedVariable, global.text);
  defined_[i.b] = 1;
}

void Machine::find_shared(Frame& frame, const SharedName& name) {
  // The table is the frame's own, made by call().
  Value*& place = const_cast<Value*&>(frame.tables[0][name.reference]);
  if (defined_[name.global] != 0) {
    place = &globals_[name.global];
  } else if (!made_procedures_.empty()) {
    Value result;
    const std::string& folded = main_.unit->globals[name.global].folded;
    if (call_made(frame, folded, {}, result)) *place = std::move(result);
  }
}

// In code made at run time: a procedure by name.
void Machine::call_dynamic(Frame& frame, const Instruction& i) {
  const std::string_view name = frame.bases[1][i.b].as_view();
  ArgumentBuffer buffer;
  collect(frame, frame.operands(i.c), buffer);
  Value result;
  if (!call_made(frame, folded_name(name), buffer.arguments(), result)) {
    if (!buffer.arguments().empty()) raise_about(errors::kTypeMismatch, name);
  }
  at(frame, i.a) = std::move(result);
}

// A method of the object in whose scope the code runs, or a procedure.
bool Machine::call_made(Frame& frame, const std::string& folded, Arguments arguments,
                        Value& result) {
  for (Frame* scope = &frame; scope != nullptr; scope = scope->scope) {
    if (scope->me == nullptr) continue;
    const ClassCode& code = scope->me->code();
    const auto found = code.member_index.find(folded);
    if (found == code.member_index.end()) continue;
    const ClassMember& m = code.members[static_cast<std::size_t>(found->second)];
    const int callee = m.method >= 0 ? m.method : m.property_get;
    if (callee < 0) continue;
    LoadedUnit& unit = scope->me->unit();
    call({unit.unit->codes[static_cast<std::size_t>(callee)].get(), &unit}, scope->me, arguments,
         &result);
    return true;
  }
  const ProcedureRef* procedure = find_procedure(folded);
  if (procedure == nullptr) return false;
  call(*procedure, nullptr, arguments, &result);
  return true;
}

// `x 1, 2` where x is a variable: the default member of the object in it.
void Machine::call_value(Frame& frame, const Instruction& i) {
  const Value& called = at(frame, i.a);
  const std::string_view name =
      i.b == kNoOperand ? std::string_view() : frame.bases[1][i.b].as_view();
  if (!called.is_object()) raise_about(errors::kTypeMismatch, name);
  if (called.as_object() == nullptr) raise_about(errors::kObjectNotSet, name);
  const Ref<Object> object(called.as_object());
  ArgumentBuffer buffer;
  collect(frame, frame.operands(i.c), buffer);
  invoke(*object, kDefaultMember, CallKind::Method, buffer.arguments(), nullptr);
}

void Machine::call_built_in(Frame& frame, const Instruction& i) {
  const std::uint32_t* const list = &frame.code->lists[i.c];
  const BuiltIn& called = built_in(static_cast<int>(i.b));
  const int count = static_cast<int>(list[0]);
  if (count < called.least_arguments || count > called.most_arguments) {
    raise_about(errors::kWrongArgumentCount, called.name);
  }
  // Built-in functions assign no arguments, so constants need no copies.
  std::array<Value*, 8> few;
  std::vector<Value*> many;
  if (list[0] > few.size()) many.resize(list[0]);
  Value** const arguments = many.empty() ? few.data() : many.data();
  for (std::uint32_t k = 0; k < list[0]; ++k) arguments[k] = &at(frame, list[k + 1]);
  Value result = called.call(*this, Arguments(arguments, list[0]));
  charge(result);
  at(frame, i.a) = std::move(result);
}

void Machine::new_object(LoadedUnit& unit, const ClassCode& code, Value& result) {
  const Ref<ScriptObject> object = make_ref<ScriptObject>(*this, unit, code);
  charge(sizeof(ScriptObject) + code.fields.size() * sizeof(Value));
  for (const Value& field : object->fields()) charge(field);
  initialize(*object);
  result = Value::object(object);
}

}  // namespace rk::vbscript
