#include <algorithm>

#include "value/arithmetic.h"
#include "value/script_error.h"
#include "vbscript/built_ins.h"
#include "vbscript/compiler.h"

namespace rk::vbscript {

namespace {

bool is_literal(const Expression* e) {
  if (e->kind == Expression::Kind::Brackets) return is_literal(e->left);
  if (e->kind == Expression::Kind::Unary && e->operation == Operator::Negate) {
    return is_literal(e->left) && !e->left->value.is_text();
  }
  return e->kind == Expression::Kind::Constant && e->literal;
}

std::optional<Relation> relation_of(Operator operation) {
  switch (operation) {
    case Operator::Equal:
      return Relation::Equal;
    case Operator::NotEqual:
      return Relation::NotEqual;
    case Operator::Less:
      return Relation::Less;
    case Operator::Greater:
      return Relation::Greater;
    case Operator::LessEqual:
      return Relation::LessEqual;
    case Operator::GreaterEqual:
      return Relation::GreaterEqual;
    default:
      return std::nullopt;
  }
}

Op op_of(Operator operation) {
  switch (operation) {
    case Operator::Power:
      return Op::Power;
    case Operator::Multiply:
      return Op::Multiply;
    case Operator::Divide:
      return Op::Divide;
    case Operator::IntegerDivide:
      return Op::IntegerDivide;
    case Operator::Modulo:
      return Op::Modulo;
    case Operator::Subtract:
      return Op::Subtract;
    case Operator::Concatenate:
      return Op::Concatenate;
    case Operator::Is:
      return Op::Is;
    case Operator::And:
      return Op::And;
    case Operator::Or:
      return Op::Or;
    case Operator::Xor:
      return Op::Xor;
    case Operator::Eqv:
      return Op::Eqv;
    case Operator::Imp:
      return Op::Imp;
    default:
      return Op::Add;
  }
}

}  // namespace

Operand Compiler::value(const Expression* e, Operand wanted) {
  switch (e->kind) {
    case Expression::Kind::Constant:
      return constant(e->value);
    case Expression::Kind::Missing:
      return constant(Value::missing());
    case Expression::Kind::Brackets:
      return value(e->left, wanted);
    case Expression::Kind::Name:
      return name_value(e, wanted);
    case Expression::Kind::Me: {
      const Operand result = result_place(wanted);
      emit(Op::Me, result);
      return result;
    }
    case Expression::Kind::Member:
    case Expression::Kind::WithMember:
      return member(e, {}, wanted);
    case Expression::Kind::Call:
      return call(e, wanted);
    case Expression::Kind::New: {
      const Operand result = result_place(wanted);
      const Meaning m = script_meaning(e->name).value_or(Meaning{});
      if (m.kind == Meaning::Kind::Class) {
        emit(Op::New, result, m.index);
      } else {
        emit(Op::NewNamed, result, name_index(e->name));
      }
      return result;
    }
    case Expression::Kind::Unary:
      return unary(e, wanted);
    case Expression::Kind::Binary:
      return binary(e, wanted);
  }
  return wanted;
}

Operand Compiler::result_place(Operand wanted, bool number) {
  if (wanted != kNoOperand) return wanted;
  return number ? number_temporary() : temporary();
}

Operand Compiler::name_value(const Expression* e, Operand wanted) {
  const Meaning m = meaning(e->name);
  if (m.kind == Meaning::Kind::Variable || m.kind == Meaning::Kind::Constant) return m.place;
  return call_meaning(m, e, {}, wanted, false);
}

Operand Compiler::unary(const Expression* e, Operand wanted) {
  if (e->operation == Operator::Negate && is_literal(e)) {
    const Value folded = negate(unit_->constants[index_of(value(e->left))]);
    return constant(folded);
  }
  const Operand inner = value(e->left);
  const Operand result = result_place(wanted, e->operation != Operator::Plus);
  const Op op = e->operation == Operator::Not      ? Op::Not
                : e->operation == Operator::Negate ? Op::Negate
                                                   : Op::Plus;
  emit(op, result, inner);
  return result;
}

// The left spine of a chain is walked in a loop: a & b & c of any length nests no call.
Operand Compiler::binary(const Expression* e, Operand wanted) {
  if (e->operation == Operator::Concatenate && e->left->kind == Expression::Kind::Binary &&
      e->left->operation == Operator::Concatenate) {
    return joined(e, wanted);
  }
  std::vector<const Expression*> spine;
  const Expression* bottom = e;
  while (bottom->kind == Expression::Kind::Binary) {
    const bool long_join = bottom->operation == Operator::Concatenate &&
                           bottom->left->kind == Expression::Kind::Binary &&
                           bottom->left->operation == Operator::Concatenate;
    if (long_join && bottom != e) break;
    spine.push_back(bottom);
    bottom = bottom->left;
  }
  Operand left = value(bottom);
  for (auto at = spine.rbegin(); at != spine.rend(); ++at) {
    left = one_binary(*at, left, *at == e ? wanted : kNoOperand);
  }
  return left;
}

Operand Compiler::one_binary(const Expression* e, Operand left, Operand wanted) {
  const Operand right = value(e->right);
  const bool may_be_text = e->operation == Operator::Add || e->operation == Operator::Concatenate;
  const Operand result = result_place(wanted, !may_be_text);
  if (const auto relation = relation_of(e->operation)) {
    auto n = static_cast<std::uint16_t>(*relation);
    if (is_literal(e->left)) n |= kLeftLiteral;
    if (is_literal(e->right)) n |= kRightLiteral;
    emit(Op::Compare, result, left, right, n);
  } else {
    emit(op_of(e->operation), result, left, right);
  }
  return result;
}

Operand Compiler::joined(const Expression* e, Operand wanted) {
  std::vector<const Expression*> parts;
  const Expression* at = e;
  while (at->kind == Expression::Kind::Binary && at->operation == Operator::Concatenate) {
    parts.push_back(at->right);
    at = at->left;
  }
  parts.push_back(at);
  std::reverse(parts.begin(), parts.end());
  std::vector<Operand> operands;
  for (const Expression* part : parts) operands.push_back(value(part));
  const Operand result = result_place(wanted);
  emit(Op::ConcatenateMany, result, 0, list(operands));
  return result;
}

// --- calls and elements -----------------------------------------------------------------------

Operand Compiler::call(const Expression* e, Operand wanted) {
  const Expression* left = e->left;
  if (left->kind == Expression::Kind::Member || left->kind == Expression::Kind::WithMember) {
    return member(left, e->arguments, wanted);
  }
  if (left->kind != Expression::Kind::Name) {
    const Operand base = value(left);
    return index(base, e->arguments, wanted);
  }
  const Meaning m = meaning(left->name);
  if (m.is_result) {
    return call_meaning({Meaning::Kind::Dynamic}, left, e->arguments, wanted, true);
  }
  // Inside a function its own name with brackets calls it again.
  const bool own_name = m.kind == Meaning::Kind::Variable && m.place == code().result &&
                        scope_->procedure != nullptr && code().result != kNoOperand;
  if (own_name) {
    Meaning again;
    if (const auto own = member_meaning(left->name)) {
      again = *own;
    } else if (const auto script = script_meaning(left->name)) {
      again = *script;
    }
    return call_meaning(again, left, e->arguments, wanted, true);
  }
  if (m.kind == Meaning::Kind::Variable || m.kind == Meaning::Kind::Constant) {
    return index(m.place, e->arguments, wanted);
  }
  return call_meaning(m, left, e->arguments, wanted, true);
}

Operand Compiler::call_meaning(const Meaning& m, const Expression* name,
                               const std::vector<const Expression*>& all, Operand wanted,
                               bool brackets) {
  const bool by_reference = m.kind != Meaning::Kind::BuiltIn;
  const std::size_t passed = passed_elements_.size();
  const std::vector<Operand> operands = arguments(all, by_reference);
  const Operand result = result_place(wanted);
  switch (m.kind) {
    case Meaning::Kind::Procedure:
      emit(Op::CallProcedure, result, m.index, list(operands));
      break;
    case Meaning::Kind::Member: {
      const ClassMember& member = scope_->owner->members[m.index];
      const int callee = member.method >= 0 ? member.method : member.property_get;
      if (callee >= 0) {
        emit(Op::CallOwn, result, static_cast<std::uint32_t>(callee), list(operands));
      } else {
        emit(Op::Raise, 0, static_cast<std::uint32_t>(errors::kWrongArgumentCount.number),
             name_index(name->name));
      }
      break;
    }
    case Meaning::Kind::BuiltIn:
      emit(Op::BuiltIn, result, m.index, list(operands));
      break;
    case Meaning::Kind::Late:
      if (brackets) {
        emit(Op::CallName, result, m.index, list(operands));
      } else {
        emit(Op::LoadName, result, m.index);
      }
      break;
    case Meaning::Kind::Dynamic:
      emit(Op::CallDynamic, result, name_index(name->name), list(operands));
      break;
    case Meaning::Kind::Undefined:
      emit(Op::Raise, 0, static_cast<std::uint32_t>(errors::kUndefinedVariable.number),
           name_index(name->name));
      break;
    default:
      emit(Op::Raise, 0, static_cast<std::uint32_t>(errors::kTypeMismatch.number),
           name_index(name->name));
  }
  write_back(passed);
  return result;
}

Operand Compiler::index(Operand base, const std::vector<const Expression*>& all, Operand wanted) {
  const std::vector<Operand> operands = arguments(all, false);
  const Operand result = result_place(wanted);
  if (operands.size() == 1) {
    emit(Op::Index1, result, base, operands[0]);
  } else {
    emit(Op::Index, result, base, list(operands));
  }
  return result;
}

Operand Compiler::member_object(const Expression* e) {
  if (e->kind == Expression::Kind::Member) return value(e->left);
  if (scope_->withs.empty()) {
    emit(Op::Raise, 0, static_cast<std::uint32_t>(errors::kUnqualifiedReference.number),
         name_index(e->name));
    return constant(Value());
  }
  return operand(Place::Register, scope_->withs.back());
}

Operand Compiler::member(const Expression* e, const std::vector<const Expression*>& all,
                         Operand wanted, Op op) {
  const Operand object = member_object(e);
  const std::size_t passed = passed_elements_.size();
  const std::vector<Operand> operands = arguments(all, true);
  const Operand result = op == Op::MemberGet ? result_place(wanted) : kNoOperand;
  emit(op, result, object, member_list(e->name, operands));
  write_back(passed);
  return result;
}

// Where a variable lies that may be passed by reference; kNoOperand where it is none.
Operand Compiler::variable_place(const Expression* e) {
  if (e->kind != Expression::Kind::Name) return kNoOperand;
  const Meaning m = meaning(e->name);
  if (m.kind == Meaning::Kind::Late) {
    const Usage* usage = scope_->usage->find(e->name);
    if (usage == nullptr || !usage->passed) return kNoOperand;
    emit(Op::CheckName, 0, m.index, 0, 1);
    return operand(Place::Global, m.index);
  }
  return m.kind == Meaning::Kind::Variable ? m.place : kNoOperand;
}

std::vector<Operand> Compiler::arguments(const std::vector<const Expression*>& all,
                                         bool by_reference) {
  std::vector<Operand> operands;
  operands.reserve(all.size());
  for (const Expression* e : all) operands.push_back(argument(e, by_reference));
  return operands;
}

Operand Compiler::argument(const Expression* e, bool by_reference) {
  if (!by_reference) return value(e);
  if (const Operand variable = variable_place(e); variable != kNoOperand) {
    birth(e->name);
    return variable;
  }
  // An element passes as a copy that is written back where the call changed it.
  if (const auto path = element_path(e, true)) {
    PassedElement passed{*path, temporary(), temporary()};
    path_value(*path, passed.before);
    emit(Op::Copy, passed.passed, passed.before);
    passed_elements_.push_back(passed);
    return passed.passed;
  }
  const Operand place = value(e);
  if (e->kind != Expression::Kind::Brackets || is_temporary(place)) return place;
  const Operand copy = temporary();
  emit(Op::Copy, copy, place);
  return copy;
}

std::optional<Compiler::ElementPath> Compiler::element_path(const Expression* e, bool kept) {
  std::vector<const Expression*> calls;
  for (; e->kind == Expression::Kind::Call; e = e->left) calls.push_back(e);
  if (calls.empty() || e->kind != Expression::Kind::Name) return std::nullopt;
  const Meaning m = meaning(e->name);
  const bool own_result = place_of(m.place) == Place::Register && m.place == code().result;
  if (m.kind != Meaning::Kind::Variable || m.is_result || own_result) return std::nullopt;
  ElementPath path{m.place, {}};
  for (auto call = calls.rbegin(); call != calls.rend(); ++call) {
    std::vector<Operand>& row = path.rows.emplace_back();
    for (const Expression* i : (*call)->arguments) {
      Operand at = value(i);
      if (kept && place_of(at) != Place::Constant && !is_temporary(at)) {
        const Operand copy = temporary();
        emit(Op::Copy, copy, at);
        at = copy;
      }
      row.push_back(at);
    }
  }
  return path;
}

Operand Compiler::path_value(const ElementPath& path, Operand wanted) {
  Operand at = path.variable;
  for (std::size_t i = 0; i < path.rows.size(); ++i) {
    const Operand found = i + 1 == path.rows.size() ? result_place(wanted) : temporary();
    emit(Op::Index, found, at, list(path.rows[i]));
    at = found;
  }
  return at;
}

std::uint32_t Compiler::path_list(const ElementPath& path) {
  std::vector<std::uint32_t> all;
  for (const std::vector<Operand>& row : path.rows) {
    all.push_back(static_cast<std::uint32_t>(row.size()));
    all.insert(all.end(), row.begin(), row.end());
  }
  return list(all);
}

// Behind a call, for the elements that were passed to it.
void Compiler::write_back(std::size_t first) {
  for (std::size_t i = first; i < passed_elements_.size(); ++i) {
    const PassedElement& element = passed_elements_[i];
    emit(Op::WriteBack, element.path.variable, element.before, element.passed);
    emit(Op::Extra, 0, 0, path_list(element.path));
  }
  passed_elements_.resize(first);
}

}  // namespace rk::vbscript
