// Values, arithmetic and logic.
#include <charconv>

#include "jetsql/days.h"
#include "jetsql/writer.h"

namespace rk::jetsql {

std::string quoted(std::string_view text) {
  std::string made = "'";
  for (const char c : text) {
    if (c == '\0')
      throw SqlError(kSyntaxError, "Syntax error in string: it holds a NUL.", SqlError::kNowhere);
    made += c;
    if (c == '\'') made += c;
  }
  return made + "'";
}

void Writer::name(std::string_view name, std::string& out) {
  out += '[';
  out += name;
  out += ']';
}

void Writer::natural(const Expression& e, std::string& out) {
  const bool brackets = e.kind == Expression::Kind::Binary || e.kind == Expression::Kind::Unary ||
                        e.kind == Expression::Kind::IsNull || e.kind == Expression::Kind::Between ||
                        e.kind == Expression::Kind::In || e.stands_for != nullptr;
  // What is written as a call has its brackets already.
  if (brackets) out += '(';
  bare(e, out);
  if (brackets) out += ')';
  if (out.size() > kMaxWrittenBytes) {
    throw SqlError(kSyntaxError, "Query is too complex.", e.begin);
  }
}

void Writer::bare(const Expression& e, std::string& out) {
  switch (e.kind) {
    case Expression::Kind::Literal:
      return literal(e, Conversion::None, false, out);
    case Expression::Kind::Constant:
      out += e.name == "null" ? "NULL" : e.name == "true" ? "1" : "0";
      return;
    case Expression::Kind::Column:
      return column(e, out);
    case Expression::Kind::Question:
      return literal(e, Conversion::None, false, out);
    case Expression::Kind::Identity:
      out += "last_insert_rowid()";
      return;
    case Expression::Kind::Unary:
      return unary(e, out);
    case Expression::Kind::Binary:
      return binary(e, out);
    case Expression::Kind::IsNull:
      natural(*e.operands[0], out);
      out += e.negated ? " IS NOT NULL" : " IS NULL";
      return;
    case Expression::Kind::Between:
      return between(e, out);
    case Expression::Kind::In:
      return in(e, out);
    case Expression::Kind::Exists:
      out.append("EXISTS(").append(whole(*e.select, e.select->top >= 0)).append(")");
      return;
    case Expression::Kind::Subselect:
      return subselect(*e.select, out);
    case Expression::Kind::Call:
      return call(e, out);
    case Expression::Kind::Star:
      out += '*';
      return;
  }
}

// A value: where more than one row may come, the second one is an error, as the engine would take
// the first.
void Writer::subselect(const Select& select, std::string& out) {
  const ResolvedOutput& only = select.scope->outputs.front();
  const bool single = select.from.empty() || (select.scope->grouped && select.group.empty()) ||
                      (select.top >= 0 && select.top <= 1 && !select.top_percent);
  if ((single && select.unions.empty()) || only.type == Type::Blob) {
    out.append("(").append(whole(select, true)).append(")");
    return;
  }
  out += "(SELECT jet_only(";
  name(only.name, out);
  out.append(") FROM (").append(whole(select, true)).append("))");
}

void Writer::value(const Expression& e, std::string& out) {
  const bool column = e.kind == Expression::Kind::Column && e.stands_for == nullptr;
  if (e.type == Type::Boolean && !column) return number(e, out);
  natural(e, out);
}

void Writer::argument(const Expression& e, std::string& out) {
  if (e.type == Type::Boolean) return number(e, out);
  natural(e, out);
}

void Writer::number(const Expression& e, std::string& out) {
  switch (e.type) {
    case Type::Integer:
    case Type::Double:
    case Type::Currency:
      return natural(e, out);
    case Type::Boolean:
      if (e.kind == Expression::Kind::Constant) {
        out += e.name == "true" ? "(-1)" : "0";
        return;
      }
      out += "(-";
      natural(e, out);
      out += ')';
      return;
    case Type::Date:
      if (e.kind == Expression::Kind::Literal)
        return literal(e, Conversion::StoredNumber, false, out);
      out += "jet_days(";
      break;
    default:
      if (e.kind == Expression::Kind::Constant) return natural(e, out);
      out += "jet_number(";
  }
  natural(e, out);
  out += ')';
}

void Writer::truth(const Expression& e, std::string& out) {
  if (e.type == Type::Boolean) return natural(e, out);
  out += '(';
  number(e, out);
  out += "<>0)";
}

void Writer::column(const Expression& e, std::string& out) {
  if (e.stands_for != nullptr) return bare(*e.stands_for, out);
  const bool own =
      scope_ != nullptr && scope_->bindings.size() == 1 && &scope_->bindings.front() == e.binding;
  if (!own && !e.binding->name.empty()) {
    name(e.binding->name, out);
    out += '.';
  }
  name(e.column->name, out);
}

// The same value met by the same kind of column is bound once. Looking a few numbers back is
// enough: what is written twice stands close together.
void Writer::bound(Parameter parameter, std::string& out) {
  std::vector<Parameter>& all = translation_.parameters;
  std::size_t place = all.size();
  constexpr std::size_t kLookBack = 32;
  for (std::size_t i = all.size(); i > 0 && i + kLookBack > all.size(); --i) {
    const Parameter& known = all[i - 1];
    if (known.source == parameter.source && known.index == parameter.index &&
        known.conversion == parameter.conversion && known.negate == parameter.negate) {
      place = i - 1;
      break;
    }
  }
  if (place == all.size()) all.push_back(parameter);
  out += '?';
  out += std::to_string(place + 1);
}

void Writer::literal(const Expression& e, Conversion conversion, bool negate, std::string& out) {
  Parameter parameter;
  parameter.conversion = conversion;
  parameter.negate = negate;
  parameter.index = static_cast<std::size_t>(e.parameter < 0 ? 0 : e.parameter);
  if (e.kind == Expression::Kind::Question) parameter.source = Parameter::Source::Caller;
  if (e.parameter >= 0) return bound(parameter, out);
  try {
    inlined(bound_value(parameter, e.literal), out);
  } catch (const SqlError& error) {
    throw SqlError(error.number(), error.what(), e.begin);
  }
}

void Writer::inlined(const Literal& given, std::string& out) {
  switch (given.kind) {
    case Literal::Kind::Text:
      out += quoted(given.text);
      return;
    case Literal::Kind::Integer:
      out += std::to_string(given.integer);
      return;
    case Literal::Kind::Double: {
      char digits[64];
      const auto end = std::to_chars(digits, digits + sizeof digits, given.number,
                                     std::chars_format::scientific);
      out.append(digits, end.ptr);
      return;
    }
    default:
      out += "NULL";
  }
}

void Writer::unary(const Expression& e, std::string& out) {
  const Expression& operand = *e.operands[0];
  if (e.op == Operator::Not) {
    out += "NOT ";
    return truth(operand, out);
  }
  out += '-';
  number(operand, out);
}

void Writer::binary(const Expression& e, std::string& out) {
  switch (e.op) {
    case Operator::Or:
      return logic(e, " OR ", out);
    case Operator::And:
      return logic(e, " AND ", out);
    case Operator::Xor:
    case Operator::Eqv:
      truth(*e.operands[0], out);
      out += e.op == Operator::Xor ? "<>" : "=";
      return truth(*e.operands[1], out);
    case Operator::Imp:
      out += "NOT ";
      truth(*e.operands[0], out);
      out += " OR ";
      return truth(*e.operands[1], out);
    case Operator::Equal:
      return compare(e, "=", out);
    case Operator::NotEqual:
      return compare(e, "<>", out);
    case Operator::Less:
      return compare(e, "<", out);
    case Operator::LessEqual:
      return compare(e, "<=", out);
    case Operator::Greater:
      return compare(e, ">", out);
    case Operator::GreaterEqual:
      return compare(e, ">=", out);
    case Operator::Like:
      return like(e, out);
    case Operator::Join:
      return join(e, out);
    case Operator::Add:
    case Operator::Subtract:
      return sum(e, out);
    case Operator::Multiply:
      return infix(e, "*", out);
    case Operator::Divide:
      return two_numbers("jet_divide", e, out);
    case Operator::Modulo:
      return two_numbers("jet_modulo", e, out);
    case Operator::IntegerDivide:
      return two_numbers("jet_quotient", e, out);
    case Operator::Power:
      return two_numbers("jet_power", e, out);
    default:
      return;
  }
}

// Whether the left operand may go without brackets, so that a long chain does not nest in the
// engine's parser: sums of sums, products of products, none of them a call.
bool Writer::joins_chain(const Expression& e, const Expression& left) {
  const auto sums = [](Operator op) { return op == Operator::Add || op == Operator::Subtract; };
  if (left.kind != Expression::Kind::Binary || !is_number(left.type) || !is_number(e.type))
    return false;
  if (sums(e.op)) return sums(left.op) || left.op == Operator::Multiply;
  return e.op == Operator::Multiply && left.op == Operator::Multiply;
}

// A chain of one operator is written without brackets between.
void Writer::logic(const Expression& e, std::string_view word, std::string& out) {
  const auto operand = [&](const Expression& inner) {
    if (inner.kind == Expression::Kind::Binary && inner.op == e.op) return logic(inner, word, out);
    const bool nested =
        inner.kind == Expression::Kind::Binary &&
        (inner.op == Operator::Or || inner.op == Operator::And || inner.op == Operator::Imp);
    if (inner.type == Type::Boolean && !nested) return bare(inner, out);
    truth(inner, out);
  };
  operand(*e.operands[0]);
  out += word;
  operand(*e.operands[1]);
}

void Writer::infix(const Expression& e, std::string_view symbol, std::string& out) {
  const Expression& left = *e.operands[0];
  if (joins_chain(e, left)) {
    binary(left, out);
  } else {
    number(left, out);
  }
  out += symbol;
  number(*e.operands[1], out);
}

void Writer::two_numbers(std::string_view function, const Expression& e, std::string& out) {
  out += function;
  out += '(';
  infix(e, ",", out);
  out += ')';
}

void Writer::sum(const Expression& e, std::string& out) {
  const std::string_view symbol = e.op == Operator::Add ? "+" : "-";
  switch (e.type) {
    case Type::Text:
      natural(*e.operands[0], out);
      out += "||";
      natural(*e.operands[1], out);
      return;
    case Type::Date:
      out += "jet_date(";
      infix(e, symbol, out);
      out += ')';
      return;
    case Type::Unknown:
      out += "jet_add(";
      argument(*e.operands[0], out);
      out += ',';
      argument(*e.operands[1], out);
      out += ')';
      return;
    default:
      infix(e, symbol, out);
  }
}

void Writer::join(const Expression& e, std::string& out) {
  // A chain is one call, built from its leftmost operand on.
  std::vector<const Expression*> operands;
  const Expression* at = &e;
  while (at->kind == Expression::Kind::Binary && at->op == Operator::Join) {
    operands.push_back(at->operands[1]);
    at = at->operands[0];
  }
  operands.push_back(at);
  // The engine takes at most 127 arguments for a call.
  constexpr std::size_t kMaxArguments = 100;
  if (operands.size() > kMaxArguments)
    throw SqlError(kSyntaxError, "Query is too complex.", e.begin);
  out += "jet_join(";
  for (std::size_t i = operands.size(); i > 0; --i) {
    argument(*operands[i - 1], out);
    if (i > 1) out += ',';
  }
  out += ')';
}

void Writer::of_type(const Expression& e, Type type, std::string& out) {
  if (type == Type::Boolean) return truth(e, out);
  if (e.type == type || type == Type::Unknown || type == Type::Blob) return argument(e, out);
  if (is_number(type)) return number(e, out);
  out += type == Type::Date ? "jet_date(" : "jet_text(";
  argument(e, out);
  out += ')';
}

void Writer::stored(const Expression& e, const Column& column, std::string& out) {
  const bool negated = e.kind == Expression::Kind::Unary && e.op == Operator::Negate &&
                       e.operands[0]->kind == Expression::Kind::Literal;
  const Expression& inner = negated ? *e.operands[0] : e;
  if (e.kind == Expression::Kind::Constant) {
    const bool flag = column.type == Type::Boolean;
    out += e.name == "null" ? "NULL" : e.name == "false" ? "0" : flag ? "1" : "-1";
    return;
  }
  if (inner.kind == Expression::Kind::Literal || inner.kind == Expression::Kind::Question) {
    Conversion conversion = Conversion::None;
    switch (column.type) {
      case Type::Boolean:
        conversion = Conversion::StoredFlag;
        break;
      case Type::Date:
        conversion = Conversion::DateText;
        break;
      case Type::Integer:
        conversion = Conversion::StoredInteger;
        break;
      case Type::Double:
        conversion = Conversion::StoredNumber;
        break;
      case Type::Currency:
        conversion = Conversion::StoredMoney;
        break;
      case Type::Text:
        conversion = Conversion::StoredText;
        break;
      default:
        break;
    }
    return literal(inner, conversion, negated, out);
  }
  if (column.type == Type::Boolean || e.type == column.type) {
    return column.type == Type::Boolean && e.type != Type::Boolean ? truth(e, out)
                                                                   : natural(e, out);
  }
  const bool rounds =
      column.type == Type::Integer || (column.type == Type::Currency && e.type != Type::Integer);
  if (rounds && e.type != Type::Boolean) {
    out += column.type == Type::Integer ? "jet_integer(" : "jet_currency(";
    number(e, out);
    out += ')';
    return;
  }
  of_type(e, column.type, out);
}

}  // namespace rk::jetsql
