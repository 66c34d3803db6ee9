#include "vbscript/built_ins.h"
#include "vbscript/compiler.h"

namespace rk::vbscript {

void Compiler::assign(const Statement& s) {
  const Expression* target = s.target;
  switch (target->kind) {
    case Expression::Kind::Name:
      return assign_name(s);
    case Expression::Kind::Member:
    case Expression::Kind::WithMember:
      return assign_member(s, target, {});
    case Expression::Kind::Call:
      if (target->left->kind == Expression::Kind::Member ||
          target->left->kind == Expression::Kind::WithMember) {
        return assign_member(s, target->left, target->arguments);
      }
      return assign_element(s);
    default:
      // Me, a literal, brackets: nothing that could be assigned.
      raise_at_run_time(errors::kIllegalAssignment, 0);
  }
}

void Compiler::assign_name(const Statement& s) {
  const NameId name = s.target->name;
  const Meaning m = meaning(name);
  switch (m.kind) {
    case Meaning::Kind::Variable:
      return assign_variable(s, m.place);
    case Meaning::Kind::Member:
      return assign_own(s, m.index, {});
    case Meaning::Kind::Late:
      emit(Op::CheckName, 0, m.index);
      return assign_variable(s, operand(Place::Global, m.index));
    case Meaning::Kind::Undefined:
      return raise_at_run_time(errors::kUndefinedVariable, name);
    case Meaning::Kind::BuiltIn:
      if (tree_.names.folded(name) == "err") {
        // Err = n sets its number.
        const Operand err = value(s.target);
        emit(Op::StoreIndex, err, list({}), value(s.value), 0);
        return;
      }
      return raise_at_run_time(errors::kIllegalAssignment, name);
    default:
      return raise_at_run_time(errors::kIllegalAssignment, name);
  }
}

void Compiler::assign_variable(const Statement& s, Operand target) {
  birth(s.target->name);
  const bool set = s.kind == Statement::Kind::SetAssign;
  if (!set && append(s, target)) return;
  // What operators compute is no object, so it goes straight to the variable.
  const bool plain =
      s.value->kind == Expression::Kind::Binary ||
      (s.value->kind == Expression::Kind::Unary && s.value->operation != Operator::Plus);
  if (plain && !set) {
    const Operand result = value(s.value, target);
    if (result != target) emit(Op::Let, target, result);
    return;
  }
  const Operand result = value(s.value);
  if (set) {
    emit(Op::SetObject, target, result);
  } else {
    emit(is_temporary(result) ? Op::LetMove : Op::Let, target, result);
  }
}

// OPTIMIZATION: `s = s & a & b` joins a and b first and appends them to s in place; joining is
// associative, also where operands are Null or Empty. What is joined must not look at s while it is
// computed, or s is held as it was.
bool Compiler::append(const Statement& s, Operand target) {
  std::vector<const Expression*> parts;
  const Expression* at = s.value;
  while (at->kind == Expression::Kind::Binary && at->operation == Operator::Concatenate) {
    parts.push_back(at->right);
    at = at->left;
  }
  if (parts.empty() || at->kind != Expression::Kind::Name || at->name != s.target->name) {
    return false;
  }
  bool quiet = true;
  for (const Expression* part : parts) quiet = quiet && touches_nothing(part);
  Operand before = target;
  if (!quiet) {
    before = temporary();
    emit(Op::Copy, before, target);
  }
  std::vector<Operand> operands;
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) operands.push_back(value(*part));
  Operand more = operands.front();
  if (operands.size() > 1) {
    more = temporary();
    emit(Op::ConcatenateMany, more, 0, list(operands));
  }
  emit(quiet ? Op::Concatenate : Op::AppendHeld, target, before, more);
  return true;
}

// Whether an expression runs no script: constants, variables, and operators and built-in functions
// over such. (An object's default member may run script; the variable is then only read later.)
bool Compiler::touches_nothing(const Expression* e) {
  for (; e != nullptr; e = e->left) {
    switch (e->kind) {
      case Expression::Kind::Constant:
      case Expression::Kind::Unary:
      case Expression::Kind::Brackets:
        break;
      case Expression::Kind::Binary:
        if (!touches_nothing(e->right)) return false;
        break;
      case Expression::Kind::Name: {
        const Meaning::Kind kind = meaning(e->name).kind;
        if (kind != Meaning::Kind::Variable && kind != Meaning::Kind::Constant) return false;
        break;
      }
      default:
        return false;
    }
  }
  return true;
}

// The place of what is indexed, redimensioned or erased.
Operand Compiler::element_container(const Expression* e) {
  if (e->kind != Expression::Kind::Name) return value(e);
  const Meaning m = meaning(e->name);
  if (m.kind == Meaning::Kind::Variable) return m.place;
  if (m.kind == Meaning::Kind::Late && unit_->option_explicit) {
    emit(Op::CheckName, 0, m.index);
    return operand(Place::Global, m.index);
  }
  return value(e);
}

void Compiler::assign_element(const Statement& s) {
  const Expression* container = s.target->left;
  if (container->kind == Expression::Kind::Name) {
    const Meaning m = meaning(container->name);
    if (m.kind == Meaning::Kind::Member) return assign_own(s, m.index, s.target->arguments);
  }
  const bool set = s.kind == Statement::Kind::SetAssign;
  if (container->kind == Expression::Kind::Call) {
    if (const auto path = element_path(s.target, false)) {
      const Operand stored = value(s.value);
      emit(Op::StorePath, path->variable, path_list(*path), stored, set ? 1 : 0);
      return;
    }
  }
  const Operand place = element_container(container);
  const std::vector<Operand> indexes = arguments(s.target->arguments, false);
  const Operand result = value(s.value);
  if (indexes.size() == 1 && !set) {
    emit(Op::StoreIndex1, place, indexes[0], result);
  } else {
    emit(Op::StoreIndex, place, list(indexes), result, set ? 1 : 0);
  }
}

void Compiler::assign_member(const Statement& s, const Expression* member,
                             const std::vector<const Expression*>& all) {
  const Operand object = member_object(member);
  const std::vector<Operand> operands = arguments(all, false);
  const Operand result = value(s.value);
  const Op op = s.kind == Statement::Kind::SetAssign ? Op::MemberSet : Op::MemberLet;
  emit(op, result, object, member_list(member->name, operands));
}

// A property of the own class by its bare name.
void Compiler::assign_own(const Statement& s, std::uint32_t index,
                          const std::vector<const Expression*>& all) {
  const ClassMember& member = scope_->owner->members[index];
  const bool set = s.kind == Statement::Kind::SetAssign;
  int callee = set ? member.property_set : member.property_let;
  if (callee < 0) {
    const bool indexes = !all.empty() && (member.method >= 0 || member.property_get >= 0);
    if (!indexes) return raise_at_run_time(errors::kIllegalAssignment, s.target->name);
    // What the property answers is indexed.
    const Operand container = name_value(s.target->left, kNoOperand);
    const std::vector<Operand> indexes_of = arguments(all, false);
    emit(Op::StoreIndex, container, list(indexes_of), value(s.value), set ? 1 : 0);
    return;
  }
  std::vector<Operand> operands = arguments(all, true);
  const Operand result = value(s.value);
  operands.push_back(result);
  emit(Op::CallOwn, temporary(), static_cast<std::uint32_t>(callee), list(operands));
  write_back(0);
}

}  // namespace rk::vbscript
