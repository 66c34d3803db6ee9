// Code made at run time: Execute, ExecuteGlobal, Eval, GetRef, and the names that they make.

#include "value/text.h"
#include "vbscript/compiler.h"
#include "vbscript/machine.h"
#include "vbscript/names.h"
#include "vbscript/parser.h"
#include "vbscript/procedure_object.h"
#include "vbscript/regexp_object.h"

namespace rk::vbscript {

// The names that code compiled now sees: those of the procedure that asked (null: the script's).
class RunEnvironment final : public Environment {
 public:
  RunEnvironment(Machine& machine, Frame* scope) : machine_(machine), scope_(scope) {}

  Found find(const std::string& folded) override {
    for (Frame* frame = scope_; frame != nullptr; frame = frame->scope) {
      Found found = find_in(*frame, folded);
      if (found.kind != Found::Kind::None) return found;
    }
    return find_global(folded);
  }

  Found find_global(const std::string& folded) override {
    Found found;
    if (Value* variable = machine_.find_variable(folded)) {
      found.kind = Found::Kind::Variable;
      found.variable = variable;
    } else if (machine_.find_procedure(folded) != nullptr) {
      found.kind = Found::Kind::Procedure;
    } else if (machine_.find_class(folded) != nullptr) {
      found.kind = Found::Kind::Class;
    } else if (const Value* constant = find_constant(folded)) {
      found.kind = Found::Kind::Constant;
      found.constant = *constant;
    } else if (std::optional<Value> known = machine_.host_.lookup(folded)) {
      found.kind = Found::Kind::Variable;
      found.variable = machine_.make_variable(folded);
      *found.variable = std::move(*known);
    }
    return found;
  }

  Value* declare(const std::string& folded) override {
    if (scope_ == nullptr) return machine_.make_variable(folded);
    if (!scope_->made) scope_->made = std::make_unique<LocalVariables>();
    std::unique_ptr<Value>& place = (*scope_->made)[folded];
    if (!place) place = std::make_unique<Value>();
    return place.get();
  }

  bool option_explicit() const override { return machine_.main_.unit->option_explicit; }

 private:
  Found find_in(Frame& frame, const std::string& folded) {
    Found found;
    if (frame.made && frame.made->contains(folded)) {
      found.kind = Found::Kind::Variable;
      found.variable = (*frame.made)[folded].get();
      return found;
    }
    for (const LocalName& name : frame.code->names) {
      if (name.folded != folded) continue;
      const bool constant = place_of(name.place) == Place::Constant;
      found.kind = constant ? Found::Kind::Constant : Found::Kind::Variable;
      found.variable = &Machine::at(frame, name.place);
      found.is_result = name.place == frame.code->result;
      if (constant) found.constant = *found.variable;
      return found;
    }
    return frame.me == nullptr ? found : find_in_object(*frame.me, folded);
  }

  static Found find_in_object(ScriptObject& object, const std::string& folded) {
    Found found;
    const auto member = object.code().member_index.find(folded);
    if (member == object.code().member_index.end()) return found;
    const ClassMember& m = object.code().members[static_cast<std::size_t>(member->second)];
    found.kind = m.field >= 0 ? Found::Kind::Variable : Found::Kind::Procedure;
    if (m.field >= 0) found.variable = &object.fields()[static_cast<std::size_t>(m.field)];
    return found;
  }

  const Value* find_constant(const std::string& folded) const {
    const Unit& unit = *machine_.main_.unit;
    const auto at = unit.names.find(folded);
    if (at == unit.names.end() || at->second.kind != Binding::Kind::Constant) return nullptr;
    return &unit.constants[at->second.index];
  }

  Machine& machine_;
  Frame* scope_;
};

namespace {

Source source_of(std::string_view text, const char* path) {
  Source source;
  source.files.emplace_back(path);
  SourcePiece& piece = source.pieces.emplace_back();
  piece.text = text;
  return source;
}

}  // namespace

// The procedure whose statement runs; null outside of procedures.
Frame* Machine::scope_of_statement() {
  if (frame_ == nullptr) return nullptr;
  const bool in_procedure = frame_->code != frame_->unit->unit->codes[0].get();
  return in_procedure ? frame_ : frame_->scope;
}

void Machine::check_stack(std::size_t needed) const {
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  if (here < stack_floor_ + needed) raise(errors::kOutOfStack);
}

void Machine::execute(std::string_view text, bool in_script_scope) {
  check_stack(kCompileStackBytes);
  Frame* const scope = in_script_scope ? nullptr : scope_of_statement();
  const Source source = source_of(text, "Execute");
  RunEnvironment environment(*this, scope);
  const std::unique_ptr<SyntaxTree> tree = Parser(source).script();
  const std::shared_ptr<const Unit> unit = Compiler(source, *tree, &environment).unit();
  auto loaded = std::make_unique<LoadedUnit>();
  loaded->unit = unit;
  loaded->sites.resize(unit->call_sites);
  LoadedUnit& ready = *loaded;
  for (const auto& [name, binding] : unit->names) {
    if (binding.kind == Binding::Kind::Procedure) {
      const ProcedureRef made{unit->codes[binding.index].get(), &ready};
      made_procedures_[name] = made;
      const auto old = main_.unit->names.find(name);
      const bool replaces =
          old != main_.unit->names.end() && old->second.kind == Binding::Kind::Procedure;
      if (replaces) procedures_[old->second.index] = made;
    } else if (binding.kind == Binding::Kind::Class) {
      made_classes_[name] = {&unit->classes[binding.index], &ready};
    }
  }
  // Kept where something of it may be called later.
  const bool kept = unit->codes.size() > 1 || !unit->classes.empty();
  if (kept) loaded_.push_back(std::move(loaded));
  run_unit(ready, scope, nullptr);
}

Value Machine::evaluate(std::string_view text) {
  check_stack(kCompileStackBytes);
  Frame* const scope = scope_of_statement();
  const Source source = source_of(text, "Eval");
  RunEnvironment environment(*this, scope);
  const std::unique_ptr<SyntaxTree> tree = Parser(source).expression_alone();
  LoadedUnit loaded;
  loaded.unit = Compiler(source, *tree, &environment).expression_unit();
  loaded.sites.resize(loaded.unit->call_sites);
  Value result;
  run_unit(loaded, scope, &result);
  return result;
}

void Machine::run_unit(LoadedUnit& unit, Frame* scope, Value* result) {
  next_scope_ = scope;
  call({unit.unit->codes[0].get(), &unit}, scope == nullptr ? nullptr : scope->me, {}, result);
}

Value Machine::procedure_object(std::string_view name) {
  const ProcedureRef* found = find_procedure(folded_name(name));
  if (found == nullptr) raise_about(errors::kInvalidCall, name);
  return Value::object(make_ref<ProcedureObject>(self_, *found));
}

Value Machine::new_object_named(std::string_view name) {
  const std::string folded = folded_name(name);
  Value result;
  if (const ClassRef* found = find_class(folded)) {
    new_object(*found->unit, *found->code, result);
  } else if (folded == "regexp") {
    result = regexp_object(services());
  } else {
    raise_about(errors::kClassNotDefined, name);
  }
  return result;
}

const ProcedureRef* Machine::find_procedure(const std::string& folded) {
  const auto made = made_procedures_.find(folded);
  if (made != made_procedures_.end()) return &made->second;
  const auto at = main_.unit->names.find(folded);
  if (at == main_.unit->names.end() || at->second.kind != Binding::Kind::Procedure) return nullptr;
  return &procedures_[at->second.index];
}

const ClassRef* Machine::find_class(const std::string& folded) {
  const auto made = made_classes_.find(folded);
  if (made != made_classes_.end()) return &made->second;
  const auto at = main_.unit->names.find(folded);
  if (at == main_.unit->names.end() || at->second.kind != Binding::Kind::Class) return nullptr;
  return &(made_classes_[folded] = {&main_.unit->classes[at->second.index], &main_});
}

Value* Machine::find_variable(const std::string& folded) {
  const auto made = made_variables_.find(folded);
  if (made != made_variables_.end()) return made->second.get();
  const auto at = main_.unit->names.find(folded);
  if (at == main_.unit->names.end() || at->second.kind != Binding::Kind::Variable) return nullptr;
  return defined_[at->second.index] != 0 ? &globals_[at->second.index] : nullptr;
}

// A name that the page only reads has its place there already.
Value* Machine::make_variable(const std::string& folded) {
  const auto at = main_.unit->names.find(folded);
  if (at != main_.unit->names.end() && at->second.kind == Binding::Kind::Variable) {
    defined_[at->second.index] = 1;
    return &globals_[at->second.index];
  }
  std::unique_ptr<Value>& place = made_variables_[folded];
  if (!place) place = std::make_unique<Value>();
  return place.get();
}

}  // namespace rk::vbscript
