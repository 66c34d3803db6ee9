#include "vbscript/compiler.h"

namespace rk::vbscript {

// Takes a register for what a statement keeps while its block runs, and gives it back behind it.
class Compiler::Hidden {
 public:
  explicit Hidden(Compiler& compiler, std::uint32_t count = 1)
      : compiler_(compiler), first_(compiler.take_register()), count_(count) {
    for (std::uint32_t i = 1; i < count; ++i) compiler.take_register();
  }
  // Empties the registers, so that an object that was walked or meant by With goes now.
  ~Hidden() {
    compiler_.emit(Op::Clear, first_, count_);
    compiler_.scope_->next_register -= count_;
    compiler_.next_temporary_ = compiler_.scope_->next_register;
  }
  Hidden(const Hidden&) = delete;
  Hidden& operator=(const Hidden&) = delete;

  std::uint32_t index() const { return first_; }
  Operand place(std::uint32_t n = 0) const {
    return operand(vbscript::Place::Register, first_ + n);
  }

 private:
  Compiler& compiler_;
  std::uint32_t first_;
  std::uint32_t count_;
};

void Compiler::block(const Block& block) {
  for (const Statement* s : block) statement(*s);
}

void Compiler::statement(const Statement& s) {
  mark(s.position);
  statement_of_kind(s);
  clear_temporaries();
}

void Compiler::statement_of_kind(const Statement& s) {
  switch (s.kind) {
    case Statement::Kind::Assign:
    case Statement::Kind::SetAssign:
      return assign(s);
    case Statement::Kind::Call:
      return call_statement(s);
    case Statement::Kind::ReDim:
      return redim(s);
    case Statement::Kind::Erase:
      return erase(s);
    case Statement::Kind::If:
      return if_statement(s);
    case Statement::Kind::Select:
      return select_statement(s);
    case Statement::Kind::For:
      return for_statement(s);
    case Statement::Kind::ForEach:
      return for_each(s);
    case Statement::Kind::Do:
      return do_statement(s);
    case Statement::Kind::With:
      return with_statement(s);
    case Statement::Kind::Exit:
      return exit_statement(s);
    case Statement::Kind::OnError:
      emit(s.resume_next ? Op::OnErrorResume : Op::OnErrorStop);
      return;
    case Statement::Kind::WriteLiteral:
      emit(Op::WriteLiteral, 0, index_of(constant(s.literal)));
      return;
    case Statement::Kind::WriteValue:
      emit(Op::WriteValue, 0, value(s.value));
      return;
    case Statement::Kind::Dim:
    case Statement::Kind::Const:
    case Statement::Kind::OptionExplicit:
    case Statement::Kind::Stop:
      return;
  }
}

// --- conditions -------------------------------------------------------------------------------

std::size_t Compiler::jump_unless(const Expression* condition) {
  const Operand truth = value(condition);
  // OPTIMIZATION: a comparison that is only jumped on needs no Boolean between.
  const bool compared = condition->kind == Expression::Kind::Binary && is_temporary(truth) &&
                        code().instructions.back().op == Op::Compare &&
                        code().instructions.back().a == truth;
  if (compared && scope_->dirty_begin == scope_->dirty_end) {
    const Instruction comparison = code().instructions.back();
    code().instructions.pop_back();
    next_temporary_ = scope_->next_register;
    return emit(Op::JumpCompare, comparison.b, comparison.c, 0, comparison.n);
  }
  if (!is_temporary(truth)) {
    clear_temporaries();
    return emit(Op::JumpFalse, truth);
  }
  Operand kept = truth;
  clear_temporaries_but(kept);
  return emit(Op::JumpFalse, kept, 0, 0, 1);
}

std::size_t Compiler::jump_if(const Expression* condition) {
  const std::size_t jump = jump_unless(condition);
  // Around an unconditional jump, which the caller patches.
  const std::size_t taken = emit(Op::Jump);
  patch(jump, here());
  return taken;
}

void Compiler::if_statement(const Statement& s) {
  std::vector<std::size_t> to_end;
  for (std::size_t i = 0; i < s.branches.size(); ++i) {
    const CaseBranch& branch = s.branches[i];
    if (branch.tests.empty()) {
      block(branch.body);
      break;
    }
    if (i > 0) mark(branch.position, false);
    const std::size_t past = jump_unless(branch.tests.front());
    block(branch.body);
    if (i + 1 < s.branches.size()) {
      mark(s.branches[i + 1].position);
      to_end.push_back(emit(Op::Jump));
    }
    patch(past, here());
  }
  for (const std::size_t jump : to_end) patch(jump, here());
  mark(s.end);
}

void Compiler::select_statement(const Statement& s) {
  const Hidden selector(*this);
  const Operand chosen = value(s.target);
  emit(is_temporary(chosen) ? Op::LetMove : Op::Let, selector.place(), chosen);
  clear_temporaries();
  std::vector<std::size_t> to_end;
  for (const CaseBranch& branch : s.branches) {
    mark(branch.position, false);
    std::vector<std::size_t> to_body;
    case_tests(branch, selector.place(), to_body);
    std::size_t past = 0;
    if (!branch.tests.empty()) past = emit(Op::Jump);
    for (const std::size_t jump : to_body) patch(jump, here());
    block(branch.body);
    mark(s.end);
    to_end.push_back(emit(Op::Jump));
    if (!branch.tests.empty()) patch(past, here());
  }
  for (const std::size_t jump : to_end) patch(jump, here());
  mark(s.end);
}

void Compiler::case_tests(const CaseBranch& branch, Operand selector,
                          std::vector<std::size_t>& to_body) {
  for (const Expression* test : branch.tests) {
    const Operand right = value(test);
    Operand truth = temporary();
    auto n = static_cast<std::uint16_t>(Relation::Equal);
    n |= kCaseTest;
    if (test->kind == Expression::Kind::Constant && test->literal) n |= kRightLiteral;
    emit(Op::Compare, truth, selector, right, n);
    clear_temporaries_but(truth);
    to_body.push_back(emit(Op::JumpTrue, truth));
  }
}

// --- loops ------------------------------------------------------------------------------------

void Compiler::for_statement(const Statement& s) {
  const Hidden hidden(*this, 2);  // limit, step
  const Operand variable = loop_variable(s.target);
  emit(Op::Clear, hidden.index(), 2);
  std::vector<Operand> operands{variable, value(s.value), value(s.limit)};
  operands.push_back(s.step == nullptr ? constant(Value::integer(1)) : value(s.step));
  operands.push_back(hidden.place());
  const std::size_t start = emit(Op::ForStart, 0, 0, list(operands));
  clear_temporaries();
  scope_->loops.push_back({Statement::ExitKind::For, {}});
  const std::uint32_t body = here();
  block(s.body);
  mark(s.end);
  emit(Op::ForNext, variable, hidden.index(), body);
  code().instructions[start].a = here();
  end_loop();
}

void Compiler::for_each(const Statement& s) {
  const Hidden walked(*this);
  const Operand variable = loop_variable(s.target);
  emit(Op::Clear, walked.index(), 1);
  const Operand collection = value(s.value);
  const std::size_t start = emit(Op::EachStart, walked.place(), collection);
  clear_temporaries();
  scope_->loops.push_back({Statement::ExitKind::For, {}});
  const std::uint32_t body = here();
  block(s.body);
  mark(s.end);
  patch(start, here());
  emit(Op::EachNext, variable, walked.index(), body);
  end_loop();
}

Operand Compiler::loop_variable(const Expression* name) {
  const Meaning m = meaning(name->name);
  birth(name->name);
  if (m.kind == Meaning::Kind::Variable) return m.place;
  if (m.kind == Meaning::Kind::Late) {
    emit(Op::CheckName, 0, m.index);
    return operand(vbscript::Place::Global, m.index);
  }
  raise_at_run_time(
      m.kind == Meaning::Kind::Undefined ? errors::kUndefinedVariable : errors::kIllegalAssignment,
      name->name);
  return temporary();
}

void Compiler::do_statement(const Statement& s) {
  if (!s.is_while) scope_->loops.push_back({Statement::ExitKind::Do, {}});
  const std::uint32_t head = here();
  std::vector<std::size_t> out;
  const auto test = [&] {
    return s.test == Statement::Test::Until ? jump_if(s.value) : jump_unless(s.value);
  };
  if (s.test != Statement::Test::None && !s.test_at_end) {
    mark(s.position, false);
    out.push_back(test());
  }
  block(s.body);
  mark(s.end);
  if (s.test_at_end) out.push_back(test());
  emit(Op::Loop, 0, 0, head);
  for (const std::size_t jump : out) patch(jump, here());
  if (!s.is_while) end_loop();
}

void Compiler::end_loop() {
  for (const std::size_t jump : scope_->loops.back().exits) patch(jump, here());
  scope_->loops.pop_back();
  // A statement begins here for what jumps behind the loop.
  code().marks.push_back({here(), code().marks.back().place, true, scope_->next_register});
}

void Compiler::exit_statement(const Statement& s) {
  if (s.exit != Statement::ExitKind::Do && s.exit != Statement::ExitKind::For) {
    emit(Op::Return, 1);
    return;
  }
  for (auto loop = scope_->loops.rbegin(); loop != scope_->loops.rend(); ++loop) {
    if (loop->kind != s.exit) continue;
    loop->exits.push_back(emit(Op::Jump));
    return;
  }
}

void Compiler::with_statement(const Statement& s) {
  const Hidden object(*this);
  emit(Op::Clear, object.index(), 1);
  emit(Op::WithStart, object.place(), value(s.value));
  clear_temporaries();
  scope_->withs.push_back(object.index());
  block(s.body);
  scope_->withs.pop_back();
  mark(s.end);
}

// --- arrays -----------------------------------------------------------------------------------

void Compiler::redim(const Statement& s) {
  for (const Declarator& d : s.declarators) {
    const std::uint16_t preserve = s.preserve ? 1 : 0;
    if (d.target->kind == Expression::Kind::Name) birth(d.target->name);
    const Operand place = element_container(d.target);
    const bool is_variable = d.target->kind == Expression::Kind::Name && !is_temporary(place);
    const std::vector<Operand> bounds = arguments(d.redim_bounds, false);
    emit(Op::ReDim, place, 0, list(bounds), preserve);
    const bool is_member = d.target->kind == Expression::Kind::Member ||
                           d.target->kind == Expression::Kind::WithMember;
    if (!is_variable && is_member) {
      const Operand object = member_object(d.target);
      emit(Op::MemberLet, place, object, member_list(d.target->name, {}));
    }
  }
}

void Compiler::erase(const Statement& s) {
  if (const auto path = element_path(s.target, true)) {
    const Operand element = path_value(*path, temporary());
    emit(Op::Erase, element);
    emit(Op::StorePath, path->variable, path_list(*path), element);
    return;
  }
  emit(Op::Erase, element_container(s.target));
}

// --- calls ------------------------------------------------------------------------------------

void Compiler::call_statement(const Statement& s) {
  const Expression* target = s.target;
  switch (target->kind) {
    case Expression::Kind::Name:
      return call_name(target, s.arguments);
    case Expression::Kind::Member:
    case Expression::Kind::WithMember:
      member(target, s.arguments, kNoOperand, Op::MemberCall);
      return;
    default: {
      const Operand called = value(target);
      const std::vector<Operand> operands = arguments(s.arguments, true);
      emit(Op::CallValue, called, kNoOperand, list(operands));
      write_back(0);
    }
  }
}

void Compiler::call_name(const Expression* name, const std::vector<const Expression*>& all) {
  Meaning m = meaning(name->name);
  const bool own_name = m.kind == Meaning::Kind::Variable && scope_->procedure != nullptr &&
                        code().result != kNoOperand && m.place == code().result;
  if (own_name) m = member_meaning(name->name).value_or(script_meaning(name->name).value_or(m));
  if (m.is_result) m = {Meaning::Kind::Dynamic};
  if (m.kind != Meaning::Kind::Variable && m.kind != Meaning::Kind::Constant) {
    call_meaning(m, name, all, temporary(), true);
    return;
  }
  const std::vector<Operand> operands = arguments(all, true);
  emit(Op::CallValue, m.place, name_index(name->name), list(operands));
  write_back(0);
}

void Compiler::raise_at_run_time(const KnownError& error, NameId name) {
  emit(Op::Raise, 0, static_cast<std::uint32_t>(error.number), name_index(name));
}

}  // namespace rk::vbscript
