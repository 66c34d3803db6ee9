#include <new>

#include "platform/page.h"
#include "value/arithmetic.h"
#include "vbscript/machine.h"

namespace rk::vbscript {

namespace {

using Kind = Value::Kind;

bool both(const Value& a, const Value& b, Kind kind) {
  return a.kind() == kind && b.kind() == kind;
}

// What counters add to a sum that has become a Double.
bool widens(const Value& value) {
  return value.kind() == Kind::Double || value.kind() == Kind::Long ||
         value.kind() == Kind::Integer;
}
double widened(const Value& value) {
  if (value.kind() == Kind::Long) return value.as_long();
  return value.kind() == Kind::Integer ? value.as_integer() : value.as_double();
}

// OPTIMIZATION: the kinds that loops and counters have, without a call. What does not fit goes the
// general way.
bool add_fast(Value& result, const Value& a, const Value& b) {
  if (both(a, b, Kind::Integer)) {
    const int sum = a.as_integer() + b.as_integer();
    result = sum == static_cast<std::int16_t>(sum) ? Value::integer(static_cast<std::int16_t>(sum))
                                                   : Value::long_integer(sum);
    return true;
  }
  const bool whole = (a.kind() == Kind::Long || a.kind() == Kind::Integer) &&
                     (b.kind() == Kind::Long || b.kind() == Kind::Integer);
  if (whole) {
    const std::int32_t x = a.kind() == Kind::Long ? a.as_long() : a.as_integer();
    const std::int32_t y = b.kind() == Kind::Long ? b.as_long() : b.as_integer();
    std::int32_t sum = 0;
    if (__builtin_add_overflow(x, y, &sum)) return false;
    result = Value::long_integer(sum);
    return true;
  }
  if (a.kind() == Kind::Double && widens(b)) {
    const double sum = a.as_double() + widened(b);
    if (!(sum - sum == 0)) return false;  // past the widest kind
    result = Value::real(sum);
    return true;
  }
  return false;
}

bool subtract_fast(Value& result, const Value& a, const Value& b) {
  if (both(a, b, Kind::Integer)) {
    const int difference = a.as_integer() - b.as_integer();
    result = difference == static_cast<std::int16_t>(difference)
                 ? Value::integer(static_cast<std::int16_t>(difference))
                 : Value::long_integer(difference);
    return true;
  }
  return false;
}

void add_into(Value& result, const Value& a, const Value& b) {
  if (add_fast(result, a, b)) return;
  if (&result == &a && a.is_text() && b.is_text()) {
    result.append(b.as_text());
    return;
  }
  result = add(a, b);
}

// Appends in place where the result is the left side.
void concatenate_into(Value& result, const Value& a, const Value& b) {
  // Reading an object may run script that changes the left side.
  if (&result != &a || !a.is_text() || b.is_object()) {
    result = concatenate(a, b);
  } else if (b.is_text()) {
    result.append(b.as_text());
  } else {
    const Value joined = concatenate(Value::text(Text()), b);
    result.append(joined.as_text());
  }
}

// Nothing where the kinds need the general way.
std::optional<bool> compare_fast(const Value& a, const Value& b, std::uint16_t n) {
  double x = 0;
  double y = 0;
  if (both(a, b, Kind::Integer)) {
    x = a.as_integer();
    y = b.as_integer();
  } else if (both(a, b, Kind::Long)) {
    x = a.as_long();
    y = b.as_long();
  } else if (a.kind() == Kind::Long && b.kind() == Kind::Integer) {
    x = a.as_long();
    y = b.as_integer();
  } else if (both(a, b, Kind::Double)) {
    x = a.as_double();
    y = b.as_double();
  } else {
    return std::nullopt;
  }
  switch (static_cast<Relation>(n & kRelationMask)) {
    case Relation::Equal:
      return x == y;
    case Relation::NotEqual:
      return x != y;
    case Relation::Less:
      return x < y;
    case Relation::Greater:
      return x > y;
    case Relation::LessEqual:
      return x <= y;
    case Relation::GreaterEqual:
      return x >= y;
  }
  return std::nullopt;
}

}  // namespace

// The error trap of the language.
void Machine::execute(Frame& frame) {
  while (true) {
    try {
      step_through(frame);
      return;
    } catch (const ScriptError& error) {
      if (!trap(frame, error)) throw;
    } catch (const std::bad_alloc&) {
      // No error that a script could trap: it would go on with nothing to go on with.
      throw platform::PageEnd{platform::PageEnd::Reason::OutOfMemory};
    }
  }
}

// Where the frame resumes, notes the error and moves to the next statement.
bool Machine::trap(Frame& frame, const ScriptError& error) {
  const auto failed = static_cast<std::uint32_t>(frame.at - frame.code->instructions.data());
  const Mark* current = nullptr;
  const Mark* next = nullptr;
  for (const Mark& mark : frame.code->marks) {
    if (mark.first <= failed) {
      current = &mark;
    } else if (mark.resumable) {
      next = &mark;
      break;
    }
  }
  if (!error_placed_ && frame.unit == &main_ && current != nullptr) {
    error_placed_ = true;
    error_place_ = current->place;
  }
  if (!frame.resume_next || next == nullptr) return false;
  err_->set(error);
  error_placed_ = false;
  error_name_.clear();
  const std::uint32_t first = current == nullptr ? frame.code->registers : current->first_temporary;
  for (std::uint32_t i = first; i < frame.code->registers; ++i) frame.bases[0][i] = Value();
  frame.at = frame.code->instructions.data() + next->first;
  return true;
}

// The one switch over all operations: splitting it would cost a call an instruction.
// NOLINTNEXTLINE(readability-function-size)
void Machine::step_through(Frame& frame) {
  const Instruction* const code = frame.code->instructions.data();
  const auto jump_to = [&](std::uint32_t target) { frame.at = code + target; };
  while (true) {
    const Instruction& i = *frame.at;
    switch (i.op) {
      case Op::Let:
        let(at(frame, i.a), at(frame, i.b));
        if (at(frame, i.a).is_array()) charge(at(frame, i.a));
        break;
      case Op::LetMove:
        let_move(at(frame, i.a), at(frame, i.b));
        break;
      case Op::Copy:
        at(frame, i.a) = at(frame, i.b);
        break;
      case Op::SetObject:
        set_object(at(frame, i.a), at(frame, i.b));
        break;
      case Op::Clear:
        for (std::uint32_t r = i.a; r < i.a + i.b; ++r) frame.bases[0][r] = Value();
        break;
      case Op::Add:
        add_into(at(frame, i.a), at(frame, i.b), at(frame, i.c));
        if (at(frame, i.a).is_text()) charge(i.a == i.b ? at(frame, i.c) : at(frame, i.a));
        break;
      case Op::Subtract: {
        Value& result = at(frame, i.a);
        const Value& a = at(frame, i.b);
        const Value& b = at(frame, i.c);
        if (!subtract_fast(result, a, b)) result = subtract(a, b);
        break;
      }
      case Op::Multiply:
        at(frame, i.a) = multiply(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Divide:
        at(frame, i.a) = divide(at(frame, i.b), at(frame, i.c));
        break;
      case Op::IntegerDivide:
        at(frame, i.a) = integer_divide(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Modulo:
        at(frame, i.a) = modulo(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Power:
        at(frame, i.a) = power(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Negate:
        at(frame, i.a) = negate(at(frame, i.b));
        break;
      case Op::Plus:
        let(at(frame, i.a), at(frame, i.b));
        break;
      case Op::Concatenate:
        concatenate_into(at(frame, i.a), at(frame, i.b), at(frame, i.c));
        charge(i.a == i.b ? at(frame, i.c) : at(frame, i.a));
        break;
      case Op::Not:
        at(frame, i.a) = logical_not(at(frame, i.b));
        break;
      case Op::And:
        at(frame, i.a) = logical_and(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Or:
        at(frame, i.a) = logical_or(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Xor:
        at(frame, i.a) = logical_xor(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Eqv:
        at(frame, i.a) = logical_eqv(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Imp:
        at(frame, i.a) = logical_imp(at(frame, i.b), at(frame, i.c));
        break;
      case Op::Is: {
        const Value& a = at(frame, i.b);
        const Value& b = at(frame, i.c);
        if (!a.is_object() || !b.is_object()) raise(errors::kObjectRequired);
        at(frame, i.a) = Value::boolean(a.as_object() == b.as_object());
        break;
      }
      case Op::Compare: {
        const Value& a = at(frame, i.b);
        const Value& b = at(frame, i.c);
        if (const auto quick = compare_fast(a, b, i.n)) {
          at(frame, i.a) = Value::boolean(*quick);
          break;
        }
        bool is_null = false;
        const bool holds = compare(a, b, i.n, is_null);
        at(frame, i.a) = is_null ? Value::null() : Value::boolean(holds);
        break;
      }
      case Op::JumpCompare: {
        const Value& a = at(frame, i.a);
        const Value& b = at(frame, i.b);
        const std::optional<bool> quick = compare_fast(a, b, i.n);
        bool is_null = false;
        if (!(quick ? *quick : compare(a, b, i.n, is_null))) {
          jump_to(i.c);
          continue;
        }
        break;
      }
      case Op::Jump:
        jump_to(i.c);
        continue;
      case Op::JumpFalse: {
        Value& condition = at(frame, i.a);
        const bool holds = truth(condition);
        if (i.n != 0) condition = Value();
        if (!holds) {
          jump_to(i.c);
          continue;
        }
        break;
      }
      case Op::JumpTrue:
        if (truth(at(frame, i.a))) {
          jump_to(i.c);
          continue;
        }
        break;
      case Op::Loop:
        turn();
        jump_to(i.c);
        continue;
      case Op::ConcatenateMany:
        join(frame, i);
        charge(at(frame, i.a));
        break;
      case Op::AppendHeld:
        append_held(at(frame, i.a), at(frame, i.b), at(frame, i.c));
        charge(at(frame, i.c));
        break;
      case Op::Index1:
        index(frame, at(frame, i.b), {&i.c, 1}, at(frame, i.a));
        break;
      case Op::Index:
        index(frame, at(frame, i.b), frame.operands(i.c), at(frame, i.a));
        break;
      case Op::StoreIndex1:
        store_index(frame, at(frame, i.a), {&i.b, 1}, at(frame, i.c), false);
        break;
      case Op::StoreIndex:
        store_index(frame, at(frame, i.a), frame.operands(i.b), at(frame, i.c), i.n != 0);
        break;
      case Op::MemberGet:
        member(frame, i, CallKind::Get);
        break;
      case Op::MemberCall:
        member(frame, i, CallKind::Method);
        break;
      case Op::MemberLet:
        member(frame, i, CallKind::Let);
        break;
      case Op::MemberSet:
        member(frame, i, CallKind::Set);
        break;
      case Op::CallProcedure:
        call_procedure(frame, i);
        break;
      case Op::CallOwn:
        call_own(frame, i);
        break;
      case Op::CallName:
        call_name(frame, i);
        break;
      case Op::CallDynamic:
        call_dynamic(frame, i);
        break;
      case Op::CallValue:
        call_value(frame, i);
        break;
      case Op::BuiltIn:
        call_built_in(frame, i);
        break;
      case Op::New:
        new_object(*frame.unit, frame.unit->unit->classes[i.b], at(frame, i.a));
        break;
      case Op::NewNamed: {
        Value made = new_object_named(frame.bases[1][i.b].as_view());
        at(frame, i.a) = std::move(made);
        break;
      }
      case Op::Me:
        at(frame, i.a) = Value::object(Ref<Object>(frame.me));
        break;
      case Op::LoadName:
        load_name(frame, i);
        break;
      case Op::CheckName:
        if (!defined_[i.b]) check_name(frame, i);
        break;
      case Op::FindShared:
        find_shared(frame, frame.code->shared[i.a]);
        break;
      case Op::Birth:
        defined_[i.b] = 1;
        break;
      case Op::ForStart:
        if (!for_start(frame, i)) {
          jump_to(i.a);
          continue;
        }
        break;
      case Op::ForNext:
        turn();
        if (for_next(at(frame, i.a), frame.bases[0] + i.b)) {
          jump_to(i.c);
          continue;
        }
        break;
      case Op::EachStart:
        each_start(at(frame, i.a), at(frame, i.b));
        jump_to(i.c);
        continue;
      case Op::EachNext:
        turn();
        if (each_next(at(frame, i.a), frame.bases[0][i.b])) {
          jump_to(i.c);
          continue;
        }
        break;
      case Op::WithStart: {
        const Value& object = at(frame, i.b);
        if (!object.is_object()) raise(errors::kObjectRequired);
        at(frame, i.a) = object;
        break;
      }
      case Op::OnErrorResume:
        frame.resume_next = true;
        err_->clear();
        break;
      case Op::OnErrorStop:
        frame.resume_next = false;
        err_->clear();
        break;
      case Op::Return:
        if (i.a != 0) err_->clear();
        return;
      case Op::Raise:
        raise_number(static_cast<std::int32_t>(i.b), frame.bases[1][i.c].as_view());
      case Op::WriteLiteral:
        host_.write(frame.bases[1][i.b].as_view());
        break;
      case Op::WriteValue:
        host_.write(at(frame, i.b));
        break;
      case Op::ReDim:
        redim(frame, i);
        charge(at(frame, i.a));
        break;
      case Op::DimArray:
        dimension(frame, i);
        charge(at(frame, i.a));
        break;
      case Op::Erase:
        erase(at(frame, i.a));
        break;
      case Op::StorePath:
        store_path(frame, i);
        break;
      case Op::WriteBack:
        write_back(frame, i);
        break;
      case Op::Extra:
        break;
    }
    ++frame.at;
  }
}

}  // namespace rk::vbscript
