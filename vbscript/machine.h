// Machine: the inside of an Interpreter. It holds the variables of one run and carries out
// instructions; the files machine_*.cc each have a part of it.
//
// A script procedure's call is a call of call() on the thread's stack, so how deep scripts may
// nest follows from that stack. The registers of frames lie in a stack of their own that never
// moves, because variables are passed by reference.
#ifndef RK_VBSCRIPT_MACHINE_H_
#define RK_VBSCRIPT_MACHINE_H_

#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "value/script_error.h"
#include "value/value.h"
#include "vbscript/err_object.h"
#include "vbscript/frame.h"
#include "vbscript/host.h"
#include "vbscript/limits.h"
#include "vbscript/random_sequence.h"
#include "vbscript/register_stack.h"
#include "vbscript/script_object.h"
#include "vbscript/unit.h"

namespace rk::vbscript {

class ArgumentBuffer;

class Machine {
 public:
  Machine(std::shared_ptr<const Unit> unit, Host& host);
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // --- for the interpreter
  void run();
  bool defines(std::string_view procedure);
  Value call_named(std::string_view procedure, Arguments arguments);
  void finish();
  SourcePlace place() const;
  // An untrapped error with its place.
  [[noreturn]] void rethrow(const ScriptError& error);

  // --- for built-in functions and objects
  Host& host() { return host_; }
  const Services& services() const { return host_.services(); }
  ErrObject& err() { return *err_; }
  RandomSequence& random() { return random_; }
  std::int32_t locale() const { return locale_; }
  void set_locale(std::int32_t locale) { locale_ = locale; }
  // The plain value behind an object; nothing where it is Nothing or has no default member that
  // can be read without arguments.
  std::optional<Value> plain_or_none(const Value& value);
  void execute(std::string_view text, bool in_script_scope);
  Value evaluate(std::string_view text);
  // An object that calls a procedure by its default member; 5 where there is none.
  Value procedure_object(std::string_view name);
  Value new_object_named(std::string_view name);

  // --- for objects of script classes
  ScriptObject* objects = nullptr;  // all that live, newest first
  Value invoke_member(ScriptObject& object, MemberId id, CallKind kind, Arguments arguments);
  void initialize(ScriptObject& object);
  void terminate(ScriptObject& object) noexcept;
  void bury(ScriptObject& object) noexcept;

  void call(const ProcedureRef& procedure, ScriptObject* me, Arguments arguments, Value* result);

 private:
  friend class RunEnvironment;
  class CallDepth;

  // --- running (machine_run.cc)
  void execute(Frame& frame);
  void step_through(Frame& frame);
  bool trap(Frame& frame, const ScriptError& error);
  void turn() {
    if (--turns_left_ <= 0) look_at_time();
  }
  void look_at_time();
  // Notes what an instruction made, and counts the page's memory now and then (machine_memory.cc).
  void charge(std::size_t bytes) {
    made_bytes_ += bytes;
    if (made_bytes_ >= bytes_before_count_) count_memory();
  }
  void charge(const Value& made) {
    if (made.is_text() || made.is_array()) charge(size_of(made));
  }
  static std::size_t size_of(const Value& value);
  void count_memory();
  std::size_t memory_held() const;
  static Value& at(Frame& frame, Operand o) {
    const auto place = static_cast<std::uint32_t>(place_of(o));
    if (place < 4) return frame.bases[place][index_of(o)];
    return *frame.tables[place - 4][index_of(o)];
  }

  // --- operations (machine_operations.cc)
  static void let(Value& target, const Value& value);
  static void let_move(Value& target, Value& value);
  static void set_object(Value& target, const Value& value);
  static bool compare(const Value& a, const Value& b, std::uint16_t n, bool& is_null);
  static bool truth(const Value& value);
  void join(Frame& frame, const Instruction& i);
  static void append_held(Value& target, Value& held, const Value& more);
  bool for_start(Frame& frame, const Instruction& i);
  static bool for_next(Value& variable, Value* hidden);
  static void each_start(Value& hidden, const Value& collection);
  static bool each_next(Value& variable, Value& hidden);
  void redim(Frame& frame, const Instruction& i);
  static void dimension(Frame& frame, const Instruction& i);
  static void erase(Value& variable);

  // --- elements and members (machine_members.cc)
  void index(Frame& frame, const Value& base, std::span<const Operand> indexes, Value& result);
  void store_index(Frame& frame, Value& base, std::span<const Operand> indexes, const Value& value,
                   bool set);
  using Rows = std::span<std::vector<Value>>;  // indexes, of the outermost array first
  void store_path(Value& base, Rows rows, const Value& value, bool set);
  void store_path(Frame& frame, const Instruction& i);
  std::vector<std::vector<Value>> rows_of(Frame& frame, const std::uint32_t* list);
  void write_back(Frame& frame, const Instruction& i);
  void member(Frame& frame, const Instruction& i, CallKind kind);
  MemberId member_id(Frame& frame, Object& object, std::uint32_t site, std::uint32_t name);
  void invoke(Object& object, MemberId id, CallKind kind, Arguments arguments, Value* result);
  Value answer(ScriptObject& object, int code, Arguments arguments);
  Value field_element(Value& field, Arguments arguments);
  void store_field(Value& field, CallKind kind, Arguments arguments);

  // --- calls (machine_calls.cc)
  // Variables by their addresses; constants are copied, as what is called may assign.
  static void collect(Frame& frame, std::span<const Operand> operands, ArgumentBuffer& buffer);
  void call_procedure(Frame& frame, const Instruction& i);
  void call_own(Frame& frame, const Instruction& i);
  void call_name(Frame& frame, const Instruction& i);
  void call_dynamic(Frame& frame, const Instruction& i);
  void call_value(Frame& frame, const Instruction& i);
  void call_built_in(Frame& frame, const Instruction& i);
  void load_name(Frame& frame, const Instruction& i);
  void check_name(Frame& frame, const Instruction& i);
  void find_shared(Frame& frame, const SharedName& name);
  static Value* made_here(Frame& frame, const std::string& folded);
  void new_object(LoadedUnit& unit, const ClassCode& code, Value& result);
  bool call_made(Frame& frame, const std::string& folded, Arguments arguments, Value& result);

  // --- names of code made at run time (machine_names.cc)
  void check_stack(std::size_t needed) const;
  void run_unit(LoadedUnit& unit, Frame* scope, Value* result);
  const ProcedureRef* find_procedure(const std::string& folded);
  const ClassRef* find_class(const std::string& folded);
  Value* find_variable(const std::string& folded);
  Value* make_variable(const std::string& folded);
  Frame* scope_of_statement();

  [[noreturn]] void raise_about(const KnownError& error, std::string_view name);
  [[noreturn]] void raise_number(std::int32_t number, std::string_view name);

  Host& host_;
  std::shared_ptr<Machine*> self_ = std::make_shared<Machine*>(this);  // null when it is gone
  LoadedUnit main_;
  std::vector<Value> globals_;
  std::vector<char> defined_;             // one a global: what Late names mean is settled
  std::vector<ProcedureRef> procedures_;  // by code index of the main unit
  RegisterStack registers_;
  Frame* frame_ = nullptr;
  Frame* next_scope_ = nullptr;  // of the frame that call() makes next
  int depth_ = 0;
  int turns_left_ = kTurnsBetweenTimeChecks;
  std::uintptr_t stack_floor_ = 0;
  std::size_t made_bytes_ = 0;  // since the last count
  std::size_t bytes_before_count_ = kBytesBetweenCounts;
  Ref<ErrObject> err_;
  RandomSequence random_;
  std::int32_t locale_;
  int burials_ = 0;
  std::vector<ScriptObject*> dying_;
  std::exception_ptr page_end_;  // thrown inside Class_Terminate, thrown on at the next turn

  // Where and about what the error in flight arose.
  bool error_placed_ = false;
  SourcePlace error_place_;
  std::string error_name_;
  SourcePlace last_place_;

  // What code made at run time brought.
  std::vector<std::unique_ptr<LoadedUnit>> loaded_;
  std::unordered_map<std::string, ProcedureRef> made_procedures_;
  std::unordered_map<std::string, ClassRef> made_classes_;
  LocalVariables made_variables_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_MACHINE_H_
