#include "vbscript/compiler.h"

#include <algorithm>
#include <unordered_set>

#include "vbscript/lexer.h"
#include "vbscript/syntax_error.h"
#include "vbscript/syntax_errors.h"

namespace rk::vbscript {

Compiler::Compiler(const Source& source, const SyntaxTree& tree, Environment* environment)
    : source_(source), tree_(tree), environment_(environment) {
  unit_->files = source.files;
  unit_->option_explicit =
      tree.option_explicit || (environment != nullptr && environment->option_explicit());
}

std::shared_ptr<Unit> Compiler::unit() {
  add_code(nullptr, -1);
  script_usage_ = std::make_unique<NameUsage>(tree_, tree_.body);
  declare_script();
  note_procedures();
  compile_script();
  std::vector<std::pair<const Procedure*, int>> methods;
  int next = 1;
  for (const Procedure* p : tree_.procedures) compile_procedure(*p, next++, nullptr);
  for (std::size_t i = 0; i < tree_.classes.size(); ++i) {
    for (const Procedure* p : tree_.classes[i]->procedures) {
      compile_procedure(*p, next++, &unit_->classes[i]);
    }
  }
  for (const Value& value : unit_->constants) value.share();
  return unit_;
}

std::shared_ptr<Unit> Compiler::expression_unit() {
  add_code(nullptr, -1);
  script_usage_ = std::make_unique<NameUsage>(tree_, tree_.body);
  Scope scope;
  scope.code = unit_->codes[0].get();
  scope.usage = script_usage_.get();
  begin_scope(scope, nullptr);
  const Statement& s = *tree_.body.front();
  code().result = operand(Place::Register, take_register());
  mark(s.position);
  const Operand result = value(s.value, code().result);
  if (result != code().result) emit(Op::Copy, code().result, result);
  clear_temporaries();
  end_scope(s.position);
  return unit_;
}

// --- what the script declares ------------------------------------------------------------------

void Compiler::declare_script() {
  for (const Declarator& d : script_usage_->variables()) {
    if (environment_ == nullptr) {
      declare_variable(d);
    } else if (!bindings_.try_emplace(d.name).second) {
      // Anew in a text of its own, but once in each.
      fail(syntax::kNameRedefined, d.position);
    }
  }
  for (const Constant& c : script_usage_->constants()) {
    declare(c.name, {Binding::Kind::Constant, index_of(constant(c.value))}, c.position);
  }
  declare_procedures();
  declare_classes();
  for (const Declarator& d : script_usage_->redimensioned()) {
    if (environment_ == nullptr && !bindings_.contains(d.name)) declare_variable(d);
  }
}

void Compiler::declare(NameId name, Binding binding, Position where, bool again) {
  const auto [at, is_new] = bindings_.emplace(name, binding);
  const auto [first, is_first] = declared_at_.emplace(name, where);
  if (!is_new && !again) {
    // The later one in the text is at fault, whatever is declared first here.
    const bool behind =
        std::pair(first->second.piece, first->second.offset) < std::pair(where.piece, where.offset);
    fail(syntax::kNameRedefined, behind || is_first ? where : first->second);
  }
  at->second = binding;
  unit_->names[tree_.names.folded(name)] = binding;
}

void Compiler::declare_variable(const Declarator& d) {
  const std::uint32_t slot = add_global(d.name);
  declare(d.name, {Binding::Kind::Variable, slot}, d.position);
  unit_->globals[slot].defined = true;
}

// A procedure of the same name replaces the one before it.
void Compiler::declare_procedures() {
  std::unordered_set<NameId> procedures;
  for (const Procedure* p : tree_.procedures) {
    const auto index = static_cast<std::uint32_t>(add_code(p, -1));
    const bool again = !procedures.insert(p->name).second;
    declare(p->name, {Binding::Kind::Procedure, index}, p->position, again);
  }
}

void Compiler::declare_classes() {
  for (const Class* c : tree_.classes) {
    const auto index = static_cast<std::uint32_t>(unit_->classes.size());
    declare(c->name, {Binding::Kind::Class, index}, c->position);
    declare_class(*c);
  }
}

void Compiler::declare_class(const Class& c) {
  ClassCode& code = unit_->classes.emplace_back();
  code.name = tree_.names.text(c.name);
  for (const Declarator& d : c.fields) {
    const std::string& folded = tree_.names.folded(d.name);
    if (code.member_index.contains(folded)) fail(syntax::kNameRedefined, d.position);
    code.member_index[folded] = static_cast<int>(code.members.size());
    ClassMember& member = code.members.emplace_back();
    member.folded = folded;
    member.text = tree_.names.text(d.name);
    member.field = static_cast<int>(code.fields.size());
    member.is_public = d.is_public;
    code.fields.push_back({d.is_array, d.bounds});
  }
  const int owner = static_cast<int>(unit_->classes.size()) - 1;
  for (const Procedure* p : c.procedures) add_member(code, *p, add_code(p, owner));
  check_properties(code, c);
}

void Compiler::add_member(ClassCode& code, const Procedure& p, int code_index) {
  const std::string& folded = tree_.names.folded(p.name);
  const auto [at, is_new] =
      code.member_index.try_emplace(folded, static_cast<int>(code.members.size()));
  if (is_new) {
    ClassMember& fresh = code.members.emplace_back();
    fresh.folded = folded;
    fresh.text = tree_.names.text(p.name);
  }
  ClassMember& member = code.members[static_cast<std::size_t>(at->second)];
  const bool property = p.kind != Procedure::Kind::Sub && p.kind != Procedure::Kind::Function;
  int* place = &member.method;
  bool* visible = &member.is_public;
  if (p.kind == Procedure::Kind::PropertyGet) {
    place = &member.property_get;
    visible = &member.get_public;
  } else if (p.kind == Procedure::Kind::PropertyLet) {
    place = &member.property_let;
    visible = &member.let_public;
  } else if (p.kind == Procedure::Kind::PropertySet) {
    place = &member.property_set;
    visible = &member.set_public;
  }
  const bool taken = property ? *place >= 0 || member.field >= 0 || member.method >= 0 : !is_new;
  if (taken) fail(syntax::kNameRedefined, p.position);
  *place = code_index;
  *visible = p.is_public;
  if (p.is_default) code.default_member = at->second;
  if (p.kind == Procedure::Kind::Sub && folded == "class_initialize") code.initialize = code_index;
  if (p.kind == Procedure::Kind::Sub && folded == "class_terminate") code.terminate = code_index;
}

// Property Let and Set take one argument more than Property Get of the same name.
void Compiler::check_properties(const ClassCode& code, const Class& c) const {
  for (const Procedure* p : c.procedures) {
    const bool assigns =
        p->kind == Procedure::Kind::PropertyLet || p->kind == Procedure::Kind::PropertySet;
    if (!assigns) continue;
    const auto at = code.member_index.find(tree_.names.folded(p->name));
    const ClassMember& member = code.members[static_cast<std::size_t>(at->second)];
    const auto count = [&](int index) {
      return unit_->codes[static_cast<std::size_t>(index)]->parameters();
    };
    const bool differs =
        (member.property_get >= 0 && count(member.property_get) + 1 != p->parameters.size()) ||
        (member.property_let >= 0 && count(member.property_let) != p->parameters.size()) ||
        (member.property_set >= 0 && count(member.property_set) != p->parameters.size());
    if (differs) fail(syntax::kInconsistentArguments, p->position);
  }
}

// Names that procedures use undeclared and may assign: where the script assigns them too, they are
// the script's from that moment on.
void Compiler::note_procedures() {
  const auto note = [&](const Procedure& p) {
    const NameUsage usage(tree_, p.body);
    for (const auto& [name, use] : usage.used()) {
      if (use.assigned || use.passed) used_in_procedures_[name] = true;
    }
  };
  for (const Procedure* p : tree_.procedures) note(*p);
  for (const Class* c : tree_.classes) {
    for (const Procedure* p : c->procedures) note(*p);
  }
}

// --- bodies -----------------------------------------------------------------------------------

void Compiler::compile_script() {
  Scope scope;
  scope.code = unit_->codes[0].get();
  scope.usage = script_usage_.get();
  begin_scope(scope, nullptr);
  for (const Declarator& d : script_usage_->variables()) {
    if (environment_ != nullptr) {
      place_in_environment(d);
    } else {
      dimension(d, operand(Place::Global, global_slots_[d.name]));
    }
  }
  if (environment_ != nullptr) {
    for (const Constant& c : script_usage_->constants()) tell_environment(c);
  }
  block(tree_.body);
  end_scope(tree_.body.empty() ? Position{} : tree_.body.back()->position);
}

void Compiler::place_in_environment(const Declarator& d) {
  const std::string& folded = tree_.names.folded(d.name);
  const Environment::Found found = environment_->find(folded);
  Value* const place = found.kind == Environment::Found::Kind::Variable
                           ? found.variable
                           : environment_->declare(folded);
  const Meaning variable = outer_variable(place);
  scope_->meanings[d.name] = variable;
  dimension(d, variable.place);
}

// Code that runs later sees what this code declares.
void Compiler::tell_environment(const Constant& c) {
  const std::string& folded = tree_.names.folded(c.name);
  const Environment::Found found = environment_->find(folded);
  // A name that the page uses and does not declare has a place already.
  if (found.kind == Environment::Found::Kind::None) {
    *environment_->declare(folded) = c.value;
  } else if (found.kind == Environment::Found::Kind::Variable) {
    *found.variable = c.value;
  }
}

void Compiler::compile_procedure(const Procedure& p, int code_index, const ClassCode* owner) {
  const NameUsage usage(tree_, p.body);
  Scope scope;
  scope.code = unit_->codes[static_cast<std::size_t>(code_index)].get();
  scope.owner = owner;
  scope.usage = &usage;
  begin_scope(scope, &p);
  begin_parameters(scope, p);
  declare_locals(scope, usage);
  block(p.body);
  end_scope(p.end);
}

void Compiler::begin_scope(Scope& scope, const Procedure* p) {
  scope.procedure = p;
  scope_ = &scope;
  next_temporary_ = scope.next_register;
}

void Compiler::begin_parameters(Scope& scope, const Procedure& p) {
  scope.next_register = static_cast<std::uint32_t>(p.parameters.size());
  std::uint32_t index = 0;
  for (const Parameter& parameter : p.parameters) {
    Meaning& m = scope.meanings[parameter.name];
    m.place = parameter.by_value ? operand(Place::Register, index)
                                 : operand(Place::Reference, code().references++);
    ++index;
  }
  if (!code().is_function) return;
  code().result = operand(Place::Register, take_register());
  if (scope.meanings.contains(p.name)) fail(syntax::kNameRedefined, p.position);
  scope.meanings[p.name].place = code().result;
}

void Compiler::declare_locals(Scope& scope, const NameUsage& usage) {
  const auto declare = [&](NameId name, Meaning meaning, Position where) {
    if (!scope.meanings.emplace(name, meaning).second) fail(syntax::kNameRedefined, where);
  };
  for (const Constant& c : usage.constants()) {
    declare(c.name, {Meaning::Kind::Constant, constant(c.value)}, c.position);
  }
  for (const Declarator& d : usage.variables()) {
    const Operand place = operand(Place::Register, take_register());
    declare(d.name, {Meaning::Kind::Variable, place}, d.position);
    dimension(d, place);
  }
  // ReDim declares what is not declared where it can be seen.
  for (const Declarator& d : usage.redimensioned()) {
    if (scope.meanings.contains(d.name) || member_meaning(d.name) || script_meaning(d.name)) {
      continue;
    }
    if (environment_ != nullptr && environment_meaning(d.name)) continue;
    const Usage* in_script = script_usage_->find(d.name);
    if (environment_ == nullptr && in_script != nullptr && in_script->assigned) continue;
    declare(d.name, {Meaning::Kind::Variable, operand(Place::Register, take_register())},
            d.position);
  }
  for (const auto& [name, use] : usage.used()) meaning(name);
  next_temporary_ = scope.next_register;
}

void Compiler::dimension(const Declarator& d, Operand place) {
  if (!d.is_array) return;
  std::vector<Operand> bounds(d.bounds.begin(), d.bounds.end());
  for (std::size_t i = 0; i < bounds.size(); ++i) bounds[i] = static_cast<Operand>(d.bounds[i]);
  mark(d.position, false);
  emit(Op::DimArray, place, 0, list(bounds), d.bounds.empty() ? 0 : 1);
}

void Compiler::end_scope(Position end) {
  mark(end);
  emit(Op::Return);
  list_names(*scope_);
  scope_ = nullptr;
}

void Compiler::list_names(const Scope& scope) {
  if (scope.procedure == nullptr) return;
  for (const auto& [name, m] : scope.meanings) {
    const bool own = m.kind == Meaning::Kind::Variable && (place_of(m.place) == Place::Register ||
                                                           place_of(m.place) == Place::Reference);
    if (own || m.kind == Meaning::Kind::Constant) {
      scope.code->names.push_back({tree_.names.folded(name), m.place});
    }
  }
}

// --- tables -----------------------------------------------------------------------------------

std::uint32_t Compiler::add_global(NameId name) {
  const auto [at, is_new] =
      global_slots_.try_emplace(name, static_cast<std::uint32_t>(unit_->globals.size()));
  if (is_new) {
    Global& global = unit_->globals.emplace_back();
    global.folded = tree_.names.folded(name);
    global.text = tree_.names.text(name);
    unit_->names.try_emplace(global.folded, Binding{Binding::Kind::Variable, at->second});
  }
  return at->second;
}

int Compiler::add_code(const Procedure* p, int owner) {
  auto code = std::make_unique<Code>();
  code->owner = owner;
  if (p != nullptr) {
    code->name = tree_.names.text(p->name);
    code->is_function =
        p->kind == Procedure::Kind::Function || p->kind == Procedure::Kind::PropertyGet;
    for (const Parameter& parameter : p->parameters) code->by_value.push_back(parameter.by_value);
  }
  unit_->codes.push_back(std::move(code));
  return static_cast<int>(unit_->codes.size()) - 1;
}

Operand Compiler::constant(Value value) {
  unit_->constants.push_back(std::move(value));
  return operand(Place::Constant, static_cast<std::uint32_t>(unit_->constants.size() - 1));
}

Operand Compiler::name_constant(NameId name) {
  const auto at = name_constants_.find(name);
  if (at != name_constants_.end()) return at->second;
  const Operand place = constant(Value::text(tree_.names.text(name)));
  name_constants_.emplace(name, place);
  return place;
}

// --- instructions -----------------------------------------------------------------------------

std::size_t Compiler::emit(Op op, std::uint32_t a, std::uint32_t b, std::uint32_t c,
                           std::uint16_t n) {
  code().instructions.push_back({op, n, a, b, c});
  return code().instructions.size() - 1;
}

std::uint32_t Compiler::list(const std::vector<Operand>& operands) {
  const auto begin = static_cast<std::uint32_t>(code().lists.size());
  code().lists.push_back(static_cast<std::uint32_t>(operands.size()));
  code().lists.insert(code().lists.end(), operands.begin(), operands.end());
  return begin;
}

std::uint32_t Compiler::member_list(NameId name, const std::vector<Operand>& operands) {
  const auto begin = static_cast<std::uint32_t>(code().lists.size());
  code().lists.push_back(static_cast<std::uint32_t>(operands.size()));
  code().lists.push_back(unit_->call_sites++);
  code().lists.push_back(name_index(name));
  code().lists.insert(code().lists.end(), operands.begin(), operands.end());
  return begin;
}

void Compiler::mark(Position where, bool resumable) {
  code().marks.push_back({here(), place(where), resumable, scope_->next_register});
  code().registers = std::max(code().registers, scope_->next_register);
}

Operand Compiler::temporary() {
  const std::uint32_t index = next_temporary_++;
  code().registers = std::max(code().registers, next_temporary_);
  if (scope_->dirty_begin == scope_->dirty_end) {
    scope_->dirty_begin = index;
    scope_->dirty_end = index + 1;
  } else {
    scope_->dirty_begin = std::min(scope_->dirty_begin, index);
    scope_->dirty_end = std::max(scope_->dirty_end, index + 1);
  }
  return operand(Place::Register, index);
}

Operand Compiler::number_temporary() {
  const std::uint32_t index = next_temporary_++;
  code().registers = std::max(code().registers, next_temporary_);
  return operand(Place::Register, index);
}

bool Compiler::is_temporary(Operand o) const {
  return place_of(o) == Place::Register && index_of(o) >= scope_->next_register;
}

void Compiler::clear_temporaries() {
  if (scope_->dirty_begin != scope_->dirty_end) {
    emit(Op::Clear, scope_->dirty_begin, scope_->dirty_end - scope_->dirty_begin);
    scope_->dirty_begin = scope_->dirty_end = 0;
  }
  next_temporary_ = scope_->next_register;
}

// What a condition computed goes before the jump, so that both ways begin clean; the truth itself,
// moved to the first temporary, is emptied by the jump.
void Compiler::clear_temporaries_but(Operand& kept) {
  const Operand first = operand(vbscript::Place::Register, scope_->next_register);
  if (kept != first) emit(Op::Copy, first, kept);
  kept = first;
  if (scope_->dirty_end > scope_->next_register + 1) {
    emit(Op::Clear, scope_->next_register + 1, scope_->dirty_end - scope_->next_register - 1);
  }
  scope_->dirty_begin = scope_->dirty_end = 0;
  next_temporary_ = scope_->next_register;
}

// Between statements only: temporaries begin behind it.
std::uint32_t Compiler::take_register() {
  const std::uint32_t index = scope_->next_register++;
  next_temporary_ = scope_->next_register;
  code().registers = std::max(code().registers, scope_->next_register);
  return index;
}

void Compiler::fail(const KnownError& error, Position where) const {
  throw SyntaxError(error, place_in(source_, where.piece, where.offset));
}

// OPTIMIZATION: places come in the order of the text, so lines are counted on from the last one.
SourcePlace Compiler::place(Position where) {
  if (source_.pieces.empty()) return {};
  const SourcePiece& piece = source_.pieces[static_cast<std::size_t>(where.piece)];
  const bool onwards = last_line_ != 0 && last_position_.piece == where.piece &&
                       last_position_.offset <= where.offset;
  std::uint32_t at = onwards ? last_position_.offset : 0;
  int line = onwards ? last_line_ : piece.line;
  for (; at < where.offset && at < piece.text.size(); ++at) {
    const char c = piece.text[at];
    const bool lone_return =
        c == '\r' && (at + 1 >= piece.text.size() || piece.text[at + 1] != '\n');
    if (c == '\n' || lone_return) ++line;
  }
  last_position_ = where;
  last_line_ = line;
  return {piece.file, line};
}

}  // namespace rk::vbscript
