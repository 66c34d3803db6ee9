// What names mean: settled once a scope, in the order of the language. A name is looked for among
// what the procedure declares, the members of its class, what the script declares, and the
// built-in functions; what is declared nowhere comes last.

#include "vbscript/built_ins.h"
#include "vbscript/compiler.h"

namespace rk::vbscript {

Meaning Compiler::meaning(NameId name) {
  const auto at = scope_->meanings.find(name);
  if (at == scope_->meanings.end()) {
    const Meaning found = find_meaning(name);
    scope_->meanings.emplace(name, found);
    return found;
  }
  if (at->second.looked_up) emit(Op::FindShared, at->second.index);
  return at->second;
}

Meaning Compiler::find_meaning(NameId name) {
  if (const auto member = member_meaning(name)) return *member;
  if (const auto declared = script_meaning(name)) return *declared;
  if (environment_ != nullptr) return outer_meaning(name);
  if (const auto built_in = built_in_meaning(name)) return *built_in;
  if (scope_->procedure == nullptr) return undeclared_in_script(name);
  return undeclared_in_procedure(name);
}

std::optional<Meaning> Compiler::member_meaning(NameId name) const {
  if (scope_->owner == nullptr) return std::nullopt;
  const auto at = scope_->owner->member_index.find(tree_.names.folded(name));
  if (at == scope_->owner->member_index.end()) return std::nullopt;
  const auto index = static_cast<std::uint32_t>(at->second);
  const ClassMember& member = scope_->owner->members[index];
  Meaning m;
  if (member.field >= 0) {
    m.place = operand(Place::Field, static_cast<std::uint32_t>(member.field));
  } else {
    m.kind = Meaning::Kind::Member;
    m.index = index;
  }
  return m;
}

std::optional<Meaning> Compiler::script_meaning(NameId name) {
  const auto at = bindings_.find(name);
  if (at == bindings_.end()) return std::nullopt;
  const Binding& binding = at->second;
  Meaning m;
  m.index = binding.index;
  switch (binding.kind) {
    case Binding::Kind::Variable:
      if (environment_ != nullptr) return environment_meaning(name);
      m.place = operand(Place::Global, binding.index);
      break;
    case Binding::Kind::Constant:
      m.kind = Meaning::Kind::Constant;
      m.place = operand(Place::Constant, binding.index);
      break;
    case Binding::Kind::Procedure:
      m.kind = environment_ != nullptr ? Meaning::Kind::Dynamic : Meaning::Kind::Procedure;
      break;
    case Binding::Kind::Class:
      m.kind = Meaning::Kind::Class;
      break;
  }
  return m;
}

std::optional<Meaning> Compiler::built_in_meaning(NameId name) {
  const std::string& folded = tree_.names.folded(name);
  Meaning m;
  if (const Value* value = find_built_in_constant(folded)) {
    m.kind = Meaning::Kind::Constant;
    m.place = constant(*value);
    return m;
  }
  const int index = find_built_in(folded);
  if (index == kNoBuiltIn) return std::nullopt;
  m.kind = Meaning::Kind::BuiltIn;
  m.index = static_cast<std::uint32_t>(index);
  return m;
}

// A name that is only read may be the host's, or a procedure made at run time.
Meaning Compiler::undeclared_in_script(NameId name) {
  const Usage* usage = script_usage_->find(name);
  const bool variable = usage != nullptr && usage->assigned;
  Meaning m;
  m.index = add_global(name);
  Global& global = unit_->globals[m.index];
  global.ask_host = true;
  if (unit_->option_explicit || !variable) {
    m.kind = Meaning::Kind::Late;
    return m;
  }
  m.place = operand(Place::Global, m.index);
  if (!used_in_procedures_.contains(name)) global.defined = true;
  return m;
}

Meaning Compiler::undeclared_in_procedure(NameId name) {
  const Usage* usage = scope_->usage->find(name);
  const bool variable = usage != nullptr && (usage->assigned || usage->passed);
  const Usage* in_script = script_usage_->find(name);
  const bool script_variable = in_script != nullptr && (in_script->assigned || in_script->passed);
  Meaning m;
  if (unit_->option_explicit || (!variable && !script_variable)) {
    m.kind = Meaning::Kind::Late;
    m.index = add_global(name);
    unit_->globals[m.index].ask_host = true;
    return m;
  }
  if (!variable) {
    m.place = operand(Place::Global, add_global(name));
    unit_->globals[index_of(m.place)].ask_host = true;
    return m;
  }
  if (script_variable || !usage->assigned) return shared_variable(name, !usage->assigned);
  m.place = operand(Place::Register, take_register());
  return m;
}

Meaning Compiler::shared_variable(NameId name, bool looked_up) {
  SharedName shared;
  shared.reference = code().references++;
  shared.own_register = take_register();
  shared.global = add_global(name);
  unit_->globals[shared.global].ask_host = true;
  code().shared.push_back(shared);
  Meaning m;
  m.place = operand(Place::Reference, shared.reference);
  m.index = static_cast<std::uint32_t>(code().shared.size()) - 1;
  m.looked_up = looked_up;
  return m;
}

// A variable of the script comes to be where it is first assigned, if procedures need to know.
void Compiler::birth(NameId name) {
  if (environment_ != nullptr || scope_->procedure != nullptr) return;
  const auto slot = global_slots_.find(name);
  if (slot == global_slots_.end()) return;
  const Global& global = unit_->globals[slot->second];
  if (!global.defined && used_in_procedures_.contains(name) && !unit_->option_explicit) {
    emit(Op::Birth, 0, slot->second);
  }
}

// --- code made at run time --------------------------------------------------------------------

Meaning Compiler::outer_meaning(NameId name) {
  if (const auto found = environment_meaning(name)) return *found;
  if (const auto built_in = built_in_meaning(name)) return *built_in;
  Meaning m;
  if (unit_->option_explicit) {
    m.kind = Meaning::Kind::Undefined;
    return m;
  }
  const Usage* usage = scope_->usage->find(name);
  if (scope_->procedure != nullptr) {
    m.place = operand(Place::Register, take_register());
    return m;
  }
  if (usage != nullptr && (usage->assigned || usage->passed)) {
    return outer_variable(environment_->declare(tree_.names.folded(name)));
  }
  m.kind = Meaning::Kind::Dynamic;
  return m;
}

std::optional<Meaning> Compiler::environment_meaning(NameId name) {
  const std::string& folded = tree_.names.folded(name);
  const Environment::Found found =
      scope_->procedure == nullptr ? environment_->find(folded) : environment_->find_global(folded);
  Meaning m;
  switch (found.kind) {
    case Environment::Found::Kind::None:
      return std::nullopt;
    case Environment::Found::Kind::Variable:
      m = outer_variable(found.variable);
      m.is_result = found.is_result;
      return m;
    case Environment::Found::Kind::Constant:
      m.kind = Meaning::Kind::Constant;
      m.place = constant(found.constant);
      return m;
    case Environment::Found::Kind::Procedure:
    case Environment::Found::Kind::Class:
      m.kind = Meaning::Kind::Dynamic;
      return m;
  }
  return std::nullopt;
}

Meaning Compiler::outer_variable(Value* variable) {
  Meaning m;
  m.place = operand(Place::Outer, static_cast<std::uint32_t>(unit_->outer.size()));
  unit_->outer.push_back(variable);
  return m;
}

}  // namespace rk::vbscript
